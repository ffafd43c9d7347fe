#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"
#include "runtime/text/FontResolver.h"
#include "runtime/text/TextImage.h"

namespace runtime::patches {

namespace {

TextAlignment alignmentOf(const QString& stored) {
  if (stored == QLatin1String("Normal")) return TextAlignment::Normal;
  if (stored == QLatin1String("Opposite")) return TextAlignment::Opposite;
  if (stored == QLatin1String("Justified")) return TextAlignment::Justified;
  return TextAlignment::Centered;
}

/// Sets a string in lines. The picture's pixels depend on the destination: by default all lengths
/// are in units, of which that is two wide.
class TextImageEvaluator : public PatchEvaluator {
 public:
  explicit TextImageEvaluator(const NodeDescription& node)
      : m_inPixels(node.state.value(u"manualLayout").toBool()),
        m_horizontal(alignmentOf(node.state.value(u"horizontalAlignment").toString())),
        m_vertical(alignmentOf(node.state.value(u"verticalAlignment").toString())) {}

  void execute(Execution& x) override {
    enum { String };
    enum { ImageOut, WidthOut, HeightOut, LineCount, GlyphCount };
    const TextStyle style = styleOf(x);
    const QString text = x.string(String);
    const auto image = sharedTextImage(text, style, x.budget().imagePixels);
    const TextLayout& layout = image->layout();
    if (!text.isEmpty() && !FontResolver::contains(style.fontName))
      x.report(QStringLiteral("the font “%1” is not installed; %2 stands in")
                   .arg(style.fontName, FontResolver::defaultFamily()));
    if (!layout.problem.isEmpty()) x.report(layout.problem);
    const double units = 1 / x.destination().pixelsPerUnit();
    x.setOutput(ImageOut, layout.size.isEmpty() ? Value() : Value(Image(image)));
    x.setOutput(WidthOut, layout.size.width() * units);
    x.setOutput(HeightOut, layout.size.height() * units);
    x.setOutput(LineCount, Value::index(static_cast<quint64>(layout.lineCount)));
    x.setOutput(GlyphCount, Value::index(static_cast<quint64>(layout.glyphCount)));
  }

 private:
  [[nodiscard]] TextStyle styleOf(const Execution& x) const {
    enum { String, FontName, GlyphSize, Leading, Kerning, Width, Height };
    const double pixels = m_inPixels ? 1 : x.destination().pixelsPerUnit();
    TextStyle style;
    style.fontName = x.string(FontName);
    style.size = x.number(GlyphSize) * pixels;
    style.leading = x.number(Leading) * pixels;
    style.kerning = x.number(Kerning) * pixels;
    style.width = x.number(Width) * pixels;
    style.height = x.number(Height) * pixels;
    style.horizontal = m_horizontal;
    style.vertical = m_vertical;
    return style;
  }

  bool m_inPixels;
  TextAlignment m_horizontal;
  TextAlignment m_vertical;
};

/// Old files keep copies of some ports in the state; a stored port value wins over them.
void takeStateCopies(const NodeDescription& node, PatchPorts& ports) {
  enum { FontName = 1, GlyphSize = 2, Width = 5, Height = 6 };
  const auto take = [&](int port, QStringView key) {
    const foundation::PropertyValue stored = node.state.value(key);
    Port& taken = ports.inputs[port];
    if (!stored.isNull()) taken.defaultValue = Value::fromProperty(stored, taken.type);
  };
  take(FontName, u"fontName");
  take(GlyphSize, u"fontSize");
  take(Width, u"width");
  take(Height, u"height");
}

}  // namespace

void registerTextImage(PatchRegistry& registry) {
  registry.add({.className = QStringLiteral("QCTextImage"),
                .title = QStringLiteral("Image with String"),
                .ports = {{stringPort("inputString", "", "String"),
                           stringPort("inputFontName", "LucidaGrande", "Font Name"),
                           numberPort("inputGlyphSize", 0.1, "Font Size"),
                           numberPort("inputLeading", 0, "Font Leading Offset"),
                           numberPort("inputKerning", 0, "Font Kerning Shift"),
                           numberPort("inputWidth", 0, "Image Width"),
                           numberPort("inputHeight", 0, "Image Height")},
                          {portOf(PortType::Image, "outputImage", "Image"),
                           numberOutput("outputWidth", "Display Width"),
                           numberOutput("outputHeight", "Display Height"),
                           indexOutput("outputLineCount", "Line Count"),
                           indexOutput("outputGlyphCount", "Character Count")}},
                .status = QStringLiteral("Fonts that are not installed are replaced by Inter; "
                                         "emoji are drawn in one weight"),
                .addPorts = takeStateCopies,
                .make = makeFromNode<TextImageEvaluator>});
}

}  // namespace runtime::patches
