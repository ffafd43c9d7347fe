#pragma once

#include <QList>
#include <QRectF>
#include <optional>

#include "timeline/KeyFrameSelection.h"
#include "timeline/TYTimelineGeometry.h"
#include "timeline/TimelineRows.h"

namespace timeline {

/// What is shown only while something is dragged. In the space of the rows.
struct TimelineMarks {
  QRectF marquee;
  std::optional<double> guideTime;  ///< of what is being dragged
  std::optional<double> snapTime;   ///< what it has snapped to
  QList<QRectF> barGhosts;          ///< old places
  QList<QRectF> keyFrameGhosts;
  int insertRow = -1;  ///< rows that are dragged would land above this one
};

/// All that the painters of the timeline look at.
struct TimelineScene {
  model::Composition* composition = nullptr;
  TYTimelineGeometry geometry;
  TimelineRows rows;
  TimelineMarks marks;
  double componentsWidth = TimelineMeasures::componentsWidth;
  int componentMouseOverRow = -1;
  bool mouseOverEye = false;
  bool hasFocus = false;
  int currentRow = 0;                 ///< of the keyboard; -1 is the time ruler
  std::optional<double> currentTime;  ///< of the key frame or stop frame that the keyboard is on
};

}  // namespace timeline
