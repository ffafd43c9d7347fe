#pragma once

#include <QHash>

#include "foundation/PropertyValue.h"
#include "quartz/QuartzPatch.h"

namespace model {

struct ExportContext;

/// Collects the curves of one component and adds the nodes that play them: one time line, and
/// between it and the driven inputs a multiplexer or a colour maker where the curve needs one.
class TimeLineExport {
 public:
  /// The colour that an editor shows the curve in.
  enum class Shown { Green, Red };

  void addCurve(const QString& identifier, const foundation::PropertyValue& keyFrames, Shown shown);
  /// Three curves: red, green, blue.
  void addColorCurves(const QString& port, const foundation::PropertyArray& curves);
  /// The values that the identifier's curve picks from.
  void setMultiplexerValues(const QString& identifier, const foundation::PropertyArray& values) {
    m_multiplexerValues.insert(identifier, values);
  }
  [[nodiscard]] bool contains(const QString& identifier) const;

  /// Adds nothing when there are no curves. Both nodes stand in the context's root already.
  void add(ExportContext& context, quartz::QuartzPatch& component, quartz::QuartzPatch& renderer,
           double rowPosition) const;

 private:
  foundation::PropertyArray m_timeLines;
  QStringList m_identifiers;  ///< of the time lines; the n-th has port number n + 1
  QStringList m_colorChannels;
  QHash<QString, foundation::PropertyArray> m_multiplexerValues;
};

}  // namespace model
