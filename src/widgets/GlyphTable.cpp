#include "widgets/GlyphTable.h"

namespace widgets {
namespace {

constexpr GlyphSource kGlyphs[] = {
    {"AlignLeft", "s:M2.5 1.5V14.5|f:R4 3 9 4 .75|f:R4 9 6 4 .75"},
    {"AlignHCenter", "s:M7.5 1.5V14.5|f:R2 3 11 4 .75|f:R4 9 7 4 .75"},
    {"AlignRight", "s:M13.5 1.5V14.5|f:R3 3 9 4 .75|f:R6 9 6 4 .75"},
    {"DistributeLeft",
     "f:R2 4 3 8 .6|s:M1.5 1.5V14.5|f:R7 5.5 3 5 .6|s:M6.5 1.5V14.5|f:R12 4 3 8 .6|"
     "s:M11.5 1.5V14.5"},
    {"DistributeHCenter",
     "f:R1 4 3 8 .6|s:M2.5 1.5V14.5|f:R6 5.5 3 5 .6|s:M7.5 1.5V14.5|f:R11 4 3 8 .6|"
     "s:M12.5 1.5V14.5"},
    {"DistributeRight",
     "f:R1 4 3 8 .6|s:M4.5 1.5V14.5|f:R6 5.5 3 5 .6|s:M9.5 1.5V14.5|f:R11 4 3 8 .6|"
     "s:M14.5 1.5V14.5"},
    {"Backward", "f:R1 1 9 9 1.5|g:R5.5 5.5 9 9 1.5|s:M2.5 11.5V14.8M1 13.3L2.5 14.8L4 13.3"},
    {"Forward", "s:R1.5 1.5 9 9 1.5|o:R5.5 5.5 9.5 9.5 1.5|s:M13.5 4.5V1.2M12 2.7L13.5 1.2L15 2.7"},
    {"StopFrame", "s:R1.5 5.5 13 9 1.5|o:M4.2 1H11.8L8 6.2Z|f:R6 8.5 1.5 4 .3|f:R8.5 8.5 1.5 4 .3"},
    {"PosterFrame",
     "s:M7 3.5H3A1.5 1.5 0 0 0 1.5 5V12A1.5 1.5 0 0 0 3 13.5H13A1.5 1.5 0 0 0 14.5 12V8.5|"
     "s:M2 11.5L5.2 8.3L8 11L9.6 9.5L13 13|f:M10 1H15V7.6L12.5 5.8L10 7.6Z"},
    {"Preview", "s:R1.5 2.5 13 9 1.5|f:M6.5 4.6V9.4L10.6 7Z|s:M5 14.5H11"},
    {"Text", "s:M2.5 5V2.5H13.5V5M8 2.5V13.5M5.8 13.5H10.2"},
    {"Image", "s:R1.5 2.5 13 11 1.5|f:E5.2 6 1.35 1.35|s:M2 12L6 8.6L8.6 11L11 8.8L14 11.6"},
    {"Shapes", "s:R1.5 1.5 8 8 1|o:E10.3 10.3 4.7 4.7"},
    {"Clock", "s:E8 8 6.5 6.5|s:M8 4V8L10.8 9.8"},
    {"Ticker", "s:R1.5 4.5 13 7 1.5|s:M6.5 8H12.5|f:M5.2 5.9V10.1L2.9 8Z"},
    {"Rectangle", "s:R1.5 3.5 13 9 .2"},
    {"RoundedRectangle", "s:R1.5 3.5 13 9 3"},
    {"Ellipse", "s:E8 8 6.5 4.7"},
    {"Line", "s:M2.5 13.5L13.5 2.5"},
    {"Gradient", "s:R1.5 3.5 13 9 1.5|f:R2 4 4 8 1|h:R6 4 4 8 0"},
    {"Polygon", "s:M8 1.8L14.3 6.4L11.9 13.7H4.1L1.7 6.4Z"},
    {"Counter",
     "s:R1.5 3.5 13 9 1.5|"
     "s:M4.5 6.5L5.5 5.8V10.2M8 5.8H10.6L9.2 7.4C10.9 7.4 11 10.2 9.3 10.2C8.7 10.2 8.2 10 "
     "7.9 9.6"},
    {"Component", "s:M8 1.5L14 4.8V11.2L8 14.5L2 11.2V4.8ZM2 4.8L8 8.1L14 4.8M8 8.1V14.5"},
    {"TimelineZoomIn", "s:E7 7 5 5|s:M10.8 10.8L14.5 14.5M7 5V9M5 7H9"},
    {"TimelineZoomOut", "s:E7 7 5 5|s:M10.8 10.8L14.5 14.5M5 7H9"},
    {"TimelineStart",
     "f:R2 3 1.5 10 .5|"
     "f:M13.5 3.6V12.4Q13.5 13.3 12.7 12.8L5.9 8.5Q5.2 8 5.9 7.5L12.7 3.2Q13.5 2.7 13.5 3.6Z"},
    {"TimelineFrameBack",
     "f:M9.5 4.3V11.7Q9.5 12.5 8.8 12.1L3 8.5Q2.3 8 3 7.5L8.8 3.9Q9.5 3.5 9.5 4.3Z|"
     "f:R11.5 3.5 1.5 9 .5"},
    {"TimelinePlay",
     "f:M3.5 2.9V13.1Q3.5 14.1 4.4 13.6L13 8.6Q13.9 8 13 7.4L4.4 2.4Q3.5 1.9 3.5 2.9Z"},
    {"TimelineStop", "f:R3 3 10 10 1"},
    {"TimelineFrameForwards",
     "f:R3 3.5 1.5 9 .5|"
     "f:M6.5 4.3V11.7Q6.5 12.5 7.2 12.1L13 8.5Q13.7 8 13 7.5L7.2 3.9Q6.5 3.5 6.5 4.3Z"},
    {"TimelineEnd",
     "f:M2.5 3.6V12.4Q2.5 13.3 3.3 12.8L10.1 8.5Q10.8 8 10.1 7.5L3.3 3.2Q2.5 2.7 2.5 3.6Z|"
     "f:R12.5 3 1.5 10 .5"},
    {"AddStopframe", "s:M2.2 2.5H13.8L8 12.5Z|s:M8 3.8V8.2M5.8 6H10.2"},
    {"RemoveStopframe", "f:M1.6 2H14.4L8 13.2Z|k:M5.8 6H10.2"},
    {"AddKeyframe", "s:M8 1.7L14.3 8L8 14.3L1.7 8Z|s:M8 5.5V10.5M5.5 8H10.5"},
    {"RemoveKeyframe", "f:M8 1.2L14.8 8L8 14.8L1.2 8Z|k:M5.5 8H10.5"},
    {"PreviousKeyframe",
     "f:M11 3.6V12.4Q11 13.2 10.3 12.7L4.6 8.5Q4 8 4.6 7.5L10.3 3.3Q11 2.8 11 3.6Z"},
    {"NextKeyframe", "f:M5 3.6V12.4Q5 13.2 5.7 12.7L11.4 8.5Q12 8 11.4 7.5L5.7 3.3Q5 2.8 5 3.6Z"},
    {"DisclosingClosed",
     "f:M5.5 4.2V11.8Q5.5 12.5 6.1 12.1L11.1 8.4Q11.6 8 11.1 7.6L6.1 3.9Q5.5 3.5 5.5 4.2Z"},
    {"DisclosingOpen",
     "f:M4.2 5.5H11.8Q12.5 5.5 12.1 6.1L8.4 11.1Q8 11.6 7.6 11.1L3.9 6.1Q3.5 5.5 4.2 5.5Z"},
    {"TextLeft", "s:M2 3.5H14M2 6.5H9.5M2 9.5H14M2 12.5H7.5"},
    {"TextCenter", "s:M2 3.5H14M4.5 6.5H11.5M2 9.5H14M5.5 12.5H10.5"},
    {"TextRight", "s:M2 3.5H14M6.5 6.5H14M2 9.5H14M8.5 12.5H14"},
    {"TextJustified", "s:M2 3.5H14M2 6.5H14M2 9.5H14M2 12.5H14"},
    {"TextNatural",
     "s:M2 3.5H14M2 6.5H9.5M2 11.5H14M4.2 9.3L2 11.5L4.2 13.7M11.8 9.3L14 11.5L11.8 13.7"},
    {"Library",
     "s:R1.5 2.5 3 11 .6|s:R4.5 2.5 3 11 .6|s:M9.1 3.9L11.6 3.1L14.7 12.7L12.2 13.5Z|"
     "s:M2.5 11H3.5M5.5 11H6.5"},
    {"Inspector",
     "s:M1.5 4.5H8.5M12.5 4.5H14.5M1.5 11.5H3.5M7.5 11.5H14.5|s:E10.5 4.5 2 2|"
     "s:E5.5 11.5 2 2"},
    {"Search", "s:E7 7 4.5 4.5|s:M10.4 10.4L14 14"},
    {"Reload", "s:M13.2 6A5.7 5.7 0 1 0 13.6 9.2|f:M14.6 2.4V7H10Z"},
    {"Revert", "s:M3 6.5H10A3.5 3.5 0 0 1 10 13.5H5.5M6 3.2L2.7 6.5L6 9.8"},
    {"Warning", "s:M8 2.2L14.6 13.5H1.4ZM8 6.5V9.6|f:E8 11.5 .8 .8"},
    {"Broken", "s:R1.5 1.5 13 13 2|s:M5.3 5.3L10.7 10.7M10.7 5.3L5.3 10.7"},
    {"Info", "s:E8 8 6.5 6.5|s:M8 7.3V11.3|f:E8 5 .85 .85"},
    {"Check", "s:M3.2 8.4L6.4 11.6L12.8 4.6"},
    {"Dash", "s:M4 8H12"},
    {"Close", "s:M4 4L12 12M12 4L4 12"},
    {"More", "f:E3.5 8 1.25 1.25|f:E8 8 1.25 1.25|f:E12.5 8 1.25 1.25"},
    {"Plus", "s:M8 3V13M3 8H13"},
    {"UpDown", "s:M5.3 6.3L8 3.6L10.7 6.3M5.3 9.7L8 12.4L10.7 9.7"},
    {"Down", "s:M4.5 6.3L8 9.8L11.5 6.3"},
    {"Link",
     "s:M6.2 9.8L9.8 6.2M7.2 4.9L9 3.1A2.75 2.75 0 0 1 12.9 7L11.1 8.8M8.8 11.1L7 12.9A2.75 "
     "2.75 0 0 1 3.1 9L4.9 7.2"},
    {"Eye",
     "s:M1.2 8C3 4.9 5.3 3.5 8 3.5S13 4.9 14.8 8C13 11.1 10.7 12.5 8 12.5S3 11.1 1.2 8Z|"
     "s:E8 8 2 2"},
    {"Dropper",
     "s:M8.5 5.5L3.5 10.5V12.5H5.5L10.5 7.5M2 14L3.5 12.5M8 4L12 8|"
     "f:M9.6 4.6L11.7 2.5A1.27 1.27 0 0 1 13.5 4.3L11.4 6.4Z"},
    {"EyeOff",
     "s:M1.2 8C3 4.9 5.3 3.5 8 3.5S13 4.9 14.8 8C13 11.1 10.7 12.5 8 12.5S3 11.1 1.2 8ZM3 "
     "13.5L13 2.5"},
    {"Folder",
     "s:M1.5 12.5V4A1 1 0 0 1 2.5 3H6L7.5 4.8H13.5A1 1 0 0 1 14.5 5.8V12.5A1 1 0 0 1 13.5 "
     "13.5H2.5A1 1 0 0 1 1.5 12.5Z"},
    {"Document", "s:M3.5 1.5H9.5L12.5 4.5V14.5H3.5ZM9.5 1.5V4.5H12.5"},
    {"Trigger", "f:M9.2 1L3 9.2H7.2L6.4 15L13 6.6H8.6Z"},
    {"PictureChecks", "s:R1.5 2.5 13 11 1.5|f:R4 5 4 3 .3|f:R8 8 4 3 .3"},
    {"FullScreen", "s:M2.5 6V2.5H6M10 2.5H13.5V6M13.5 10V13.5H10M6 13.5H2.5V10"},
    {"KeyOff", "s:M8 4.2L11.8 8L8 11.8L4.2 8Z"},
    {"KeyOn", "f:M8 3.4L12.6 8L8 12.6L3.4 8Z"},
    {"Components",
     "s:R1.5 1.5 5 5 1|s:R9.5 1.5 5 5 1|s:R1.5 9.5 5 5 1|s:M12 9.2L14.8 12L12 14.8L9.2 12Z"},
    {"Examples",
     "s:M8 1.6L9.9 5.8L14.5 6.3L11.1 9.4L12 13.9L8 11.6L4 13.9L4.9 9.4L1.5 6.3L6.1 5.8Z"},
    {"ListView",
     "s:M5.5 3.5H14M5.5 8H14M5.5 12.5H14|f:E2.6 3.5 .9 .9|f:E2.6 8 .9 .9|f:E2.6 12.5 .9 .9"},
    {"GridView", "s:R2 2 5 5 .6|s:R9 2 5 5 .6|s:R2 9 5 5 .6|s:R9 9 5 5 .6"},
    {"Fonts", "s:M1.2 12.5L4.9 3.5L8.6 12.5M2.5 9.5H7.3|s:E12 10 2.4 2.4|s:M14.4 7.3V12.6"},
};

// The vertical ones are the horizontal ones with x and y exchanged.
constexpr GlyphMirror kMirrored[] = {
    {"AlignTop", "AlignLeft"},
    {"AlignVCenter", "AlignHCenter"},
    {"AlignBottom", "AlignRight"},
    {"DistributeTop", "DistributeLeft"},
    {"DistributeVCenter", "DistributeHCenter"},
    {"DistributeBottom", "DistributeRight"},
};

}  // namespace

std::span<const GlyphSource> glyphSources() {
  return kGlyphs;
}

std::span<const GlyphMirror> mirroredGlyphs() {
  return kMirrored;
}

}  // namespace widgets
