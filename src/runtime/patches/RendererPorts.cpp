#include "runtime/patches/RendererPorts.h"

namespace runtime::patches {

QList<Port> placePorts() {
  return {numberPort("inputX", 0, "X Position"),  numberPort("inputY", 0, "Y Position"),
          numberPort("inputZ", 0, "Z Position"),  numberPort("inputRX", 0, "X Rotation"),
          numberPort("inputRY", 0, "Y Rotation"), numberPort("inputRZ", 0, "Z Rotation")};
}

Port blendingPort(Blending defaultValue) {
  Port port(QStringLiteral("inputBlending"), PortType::Index,
            Value::index(static_cast<quint64>(defaultValue)), QStringLiteral("Blending"));
  port.menu = {QStringLiteral("Replace"), QStringLiteral("Over"), QStringLiteral("Add")};
  port.maximum = 3;  // files also use 3, source alpha
  return port;
}

Port depthPort(DepthTesting defaultValue) {
  return Port(QStringLiteral("inputZBuffer"), PortType::Index,
              Value::index(static_cast<quint64>(defaultValue)), QStringLiteral("Depth Testing"))
      .titles({QStringLiteral("None"), QStringLiteral("Read/Write"), QStringLiteral("Read-Only")});
}

Port cullingPort(FaceCulling defaultValue) {
  return Port(QStringLiteral("inputCulling"), PortType::Index,
              Value::index(static_cast<quint64>(defaultValue)), QStringLiteral("Face Culling"))
      .titles(
          {QStringLiteral("None"), QStringLiteral("Back Faces"), QStringLiteral("Front Faces")});
}

Port interactionPort() {
  return {QStringLiteral("_inputInteraction"),
          PortType::Interaction,
          {},
          QStringLiteral("Interaction")};
}

Blending blendingOf(quint64 code) {
  return code > 3 ? Blending::Over : static_cast<Blending>(code);
}

DepthTesting depthOf(quint64 code) {
  return code > 2 ? DepthTesting::None : static_cast<DepthTesting>(code);
}

FaceCulling cullingOf(quint64 code) {
  return code > 2 ? FaceCulling::None : static_cast<FaceCulling>(code);
}

DrawState drawState(const Execution& x, int blending, int depth, int culling) {
  DrawState state = x.context().state;
  state.blending = blendingOf(x.index(blending));
  state.depth = depthOf(x.index(depth));
  state.culling = cullingOf(x.index(culling));
  return state;
}

QMatrix4x4 placed(const QMatrix4x4& around, double x, double y, double z, double rx, double ry,
                  double rz) {
  QMatrix4x4 m = around;
  m.translate(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
  if (rx != 0) m.rotate(static_cast<float>(rx), 1, 0, 0);
  if (ry != 0) m.rotate(static_cast<float>(ry), 0, 1, 0);
  if (rz != 0) m.rotate(static_cast<float>(rz), 0, 0, 1);
  return m;
}

}  // namespace runtime::patches
