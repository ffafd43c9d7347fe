#include "canvas/ComponentProblem.h"

#include <QCoreApplication>
#include <QFileInfo>

#include "model/ComponentProgram.h"
#include "model/QuartzComponent.h"

namespace canvas {

namespace {

QString translated(const char* text) {
  return QCoreApplication::translate("canvas", text);
}

}  // namespace

QString componentName(const model::QuartzComponent& component) {
  const QString file = QFileInfo(component.compositionFilename()).fileName();
  return file.isEmpty() ? component.title() : file;
}

QString componentProblem(const model::QuartzComponent& component) {
  const QByteArray& bytes = component.quartzCompositionData();
  if (bytes.isEmpty()) return translated("is missing");
  const auto program = model::ComponentProgram::fromData(bytes, component.compositionFilename());
  if (program) return {};
  return translated("cannot be loaded: %1").arg(program.error().message);
}

QString tooSlowProblem(double seconds) {
  return translated("takes too long: %1 s a frame").arg(seconds, 0, 'f', 1);
}

QString tooMuchProblem(double coverage) {
  return translated("draws too much: it fills the canvas %1 times").arg(qRound(coverage));
}

}  // namespace canvas
