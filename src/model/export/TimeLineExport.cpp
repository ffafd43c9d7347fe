#include "model/export/TimeLineExport.h"

#include "model/export/PlayoutExport.h"
#include "quartz/ArchivedColor.h"

namespace model {

using foundation::Color;
using foundation::PropertyArray;
using foundation::PropertyDictionary;
using foundation::PropertyValue;
using quartz::QuartzPatch;

namespace {

const QString redSuffix = QStringLiteral("_red");

/// The nodes of one component's animation while they are added.
class Wiring {
 public:
  Wiring(ExportContext& context, QuartzPatch& component, QuartzPatch& renderer, double row)
      : m_context(context), m_component(component), m_renderer(renderer), m_row(row) {}

  void addTimeLine(const PropertyArray& timeLines) {
    m_timeLine = m_context.root().addPatchWithClass(
        QStringLiteral("QCTimeLine"), {{QStringLiteral("timeLines"), timeLines},
                                       {QStringLiteral("timebase"), m_context.timeLineBase},
                                       {QStringLiteral("version"), 1}});
    m_timeLine->setKey(QStringLiteral("TimeLine_%1").arg(m_component.key()));
    m_timeLine->setName(QStringLiteral("TimeLine %1").arg(m_component.name()));
    m_timeLine->setPosition({250, m_row + 100});
  }

  void driveDirectly(const QString& identifier, int portNumber) {
    connectToTargets(*m_timeLine, outputName(portNumber), identifier);
  }

  /// The curve is an index that picks one of the values.
  void driveThroughMultiplexer(const QString& identifier, int portNumber,
                               const PropertyArray& values) {
    PropertyDictionary sources;
    for (qsizetype i = 0; i < values.size(); ++i)
      sources.insert(QStringLiteral("source_%1").arg(i),
                     PropertyDictionary{{QStringLiteral("value"), values[i]}});
    const PropertyDictionary state{{QStringLiteral("customInputPortStates"), std::move(sources)},
                                   {QStringLiteral("inputCount"), qint64(values.size())},
                                   {QStringLiteral("portClass"), QStringLiteral("QCStringPort")}};
    QuartzPatch* multiplexer = addHelper(QStringLiteral("QCMultiplexer"), state,
                                         QStringLiteral("Multiplexer"), identifier);
    m_context.connect(*m_timeLine, outputName(portNumber), *multiplexer,
                      QStringLiteral("inputIndex"));
    connectToTargets(*multiplexer, QStringLiteral("output"), identifier);
  }

  /// Three curves from this port number on; alpha keeps the patch's default, opaque.
  void driveThroughColorMaker(const QString& port, int portNumber) {
    QuartzPatch* maker =
        addHelper(QStringLiteral("QCColorFromComponents"), {}, QStringLiteral("ColorMaker"), port);
    maker->setName(QStringLiteral("Color Maker %1").arg(port));
    maker->setIdentifier(QStringLiteral("rgb"));
    for (int channel = 0; channel < 3; ++channel)
      m_context.connect(*m_timeLine, outputName(portNumber + channel), *maker,
                        QStringLiteral("input%1").arg(channel + 1));
    connectToTargets(*maker, QStringLiteral("outputColor"), port);
  }

  void followStopFrameClock() {
    m_timeLine->setTimebase(QStringLiteral("external"));
    m_context.connectTime(*m_timeLine, QStringLiteral("_time"));
  }

 private:
  static QString outputName(int portNumber) { return QStringLiteral("output_%1").arg(portNumber); }

  /// Components that animate inputs of the same name would get nodes of the same key.
  QuartzPatch* addHelper(const QString& className, const PropertyDictionary& state,
                         const QString& prefix, const QString& identifier) {
    QuartzPatch* node = m_context.root().addPatchWithClass(className, state);
    node->setKey(m_context.root().uniqueNodeKey(prefix + QLatin1Char('_') + identifier));
    node->setName(prefix + QLatin1Char(' ') + identifier);
    node->setPosition({375, m_row});
    return node;
  }

  void connectToTargets(const QuartzPatch& source, const QString& output, const QString& port) {
    const bool isSize = port == QLatin1String("inputWidth") || port == QLatin1String("inputHeight");
    const bool isPlace = port == QLatin1String("originX") || port == QLatin1String("originY") ||
                         port == QLatin1String("opacity") || port == QLatin1String("zRotation");
    if (isSize || isPlace) m_context.connect(source, output, m_renderer, port);
    if (!isPlace) m_context.connect(source, output, m_component, port);
  }

  ExportContext& m_context;
  QuartzPatch& m_component;
  QuartzPatch& m_renderer;
  QuartzPatch* m_timeLine = nullptr;
  double m_row;
};

}  // namespace

void TimeLineExport::addCurve(const QString& identifier, const PropertyValue& keyFrames,
                              Shown shown) {
  m_identifiers.append(identifier);
  const Color color = shown == Shown::Green ? Color{0, 1, 0, 1} : Color{1, 0, 0, 1};
  m_timeLines.append(
      PropertyDictionary{{QStringLiteral("color"), quartz::archivedColor(color)},
                         {QStringLiteral("identifier"), identifier},
                         {QStringLiteral("keyFrames"), keyFrames},
                         {QStringLiteral("portNumber"), qint64(m_identifiers.size())},
                         {QStringLiteral("visible"), true}});
}

void TimeLineExport::addColorCurves(const QString& port, const PropertyArray& curves) {
  const QStringList suffixes{redSuffix, QStringLiteral("_green"), QStringLiteral("_blue")};
  for (qsizetype i = 0; i < suffixes.size(); ++i) {
    addCurve(port + suffixes[i], curves[i], Shown::Red);
    m_colorChannels.append(port + suffixes[i]);
  }
}

bool TimeLineExport::contains(const QString& identifier) const {
  return m_identifiers.contains(identifier);
}

void TimeLineExport::add(ExportContext& context, QuartzPatch& component, QuartzPatch& renderer,
                         double rowPosition) const {
  if (m_timeLines.isEmpty()) return;
  Wiring wiring(context, component, renderer, rowPosition);
  wiring.addTimeLine(m_timeLines);
  for (qsizetype i = 0; i < m_identifiers.size(); ++i) {
    const QString& identifier = m_identifiers[i];
    const int portNumber = static_cast<int>(i) + 1;
    if (m_multiplexerValues.contains(identifier))
      wiring.driveThroughMultiplexer(identifier, portNumber, m_multiplexerValues[identifier]);
    else if (!m_colorChannels.contains(identifier))
      wiring.driveDirectly(identifier, portNumber);
    else if (identifier.endsWith(redSuffix))  // the other two hang on the same colour maker
      wiring.driveThroughColorMaker(identifier.chopped(redSuffix.size()), portNumber);
  }
  wiring.followStopFrameClock();
}

}  // namespace model
