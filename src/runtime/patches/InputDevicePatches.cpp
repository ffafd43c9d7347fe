#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

/// The mouse as the frame's arguments state it.
class MouseEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    const FrameArguments& a = x.arguments();
    x.setOutput(0, 2 * a.mouse.x() - 1);
    x.setOutput(1, (2 * a.mouse.y() - 1) * x.destination().height() / 2);
    for (int button = 0; button < 3; ++button) x.setOutput(2 + button, a.mouseButtons[button]);
  }
};

/// The keys that a node watches: UTF-16 code units, big endian.
std::vector<char16_t> keysOf(const NodeDescription& node) {
  const QByteArray bytes = node.state.value(u"keys").toData();
  std::vector<char16_t> keys;
  for (int i = 0; i + 1 < bytes.size() && i < 2000; i += 2)
    keys.push_back(static_cast<char16_t>((static_cast<uchar>(bytes[i]) << 8) |
                                         static_cast<uchar>(bytes[i + 1])));
  return keys;
}

class KeyboardEvaluator : public PatchEvaluator {
 public:
  explicit KeyboardEvaluator(const NodeDescription& node) : m_keys(keysOf(node)) {}
  void execute(Execution& x) override {
    for (size_t i = 0; i < m_keys.size(); ++i)
      x.setOutput(static_cast<int>(i), x.arguments().pressedKeys.contains(m_keys[i]));
  }

 private:
  std::vector<char16_t> m_keys;
};

void addKeyPorts(const NodeDescription& node, PatchPorts& ports) {
  for (const char16_t key : keysOf(node))
    ports.outputs.append(
        Port(QStringLiteral("key_%1").arg(QString::number(key, 16).toUpper(), 4, QLatin1Char('0')),
             PortType::Boolean, {}, QString(QChar(key))));
}

/// An object that nobody touches: its drag stays where it starts.
class InteractionEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    static constexpr const char* pairs[][2] = {{"inputInitialXDrag", "outputXDrag"},
                                               {"inputInitialYDrag", "outputYDrag"},
                                               {"inputInitialRotateValue", "outputRotateValue"},
                                               {"inputInitialMagnifyValue", "outputMagnifyValue"}};
    for (const auto& [input, output] : pairs)
      x.setOutput(x.outputIndex(QString::fromLatin1(output)),
                  x.number(x.inputIndex(QString::fromLatin1(input))));
  }
};

QList<Port> interactionOutputs() {
  return {portOf(PortType::Interaction, "outputInteraction", "Interaction"),
          booleanOutput("outputMouseDown", "Mouse Down"),
          numberOutput("outputXLocal", "X Local"),
          numberOutput("outputYLocal", "Y Local"),
          numberOutput("outputXDrag", "X Position"),
          numberOutput("outputYDrag", "Y Position"),
          booleanOutput("outputRotate", "Rotate"),
          numberOutput("outputRotateValue", "Rotation Angle"),
          booleanOutput("outputMagnify", "Magnify"),
          numberOutput("outputMagnifyValue", "Magnification Value"),
          numberOutput("outputSwipeX", "X Swipe"),
          numberOutput("outputSwipeY", "Y Swipe")};
}

/// A device that is not there: its outputs stay zero.
class AbsentEvaluator : public PatchEvaluator {
 public:
  void execute(Execution&) override {}
};

class SilenceEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    constexpr size_t bands = 16;
    x.setOutput(0, 0.0);
    x.setOutput(1, Structure::fromValues(std::vector<Value>(bands, Value(0.0))));
  }
};

PatchClass absent(const char* className, const char* title, QList<Port> inputs,
                  QList<Port> outputs) {
  PatchClass patch;
  patch.className = QString::fromLatin1(className);
  patch.title = QString::fromLatin1(title);
  patch.kind = PatchClass::Kind::Provider;
  patch.ports = {std::move(inputs), std::move(outputs)};
  patch.status = QStringLiteral("behaves as without the device");
  patch.make = makeEvaluator<AbsentEvaluator>;
  return patch;
}

void registerAbsentDevices(PatchRegistry& registry) {
  registry.add(absent(
      "QCTablet", "Tablet", {},
      {numberOutput("outputX", "X"), numberOutput("outputY", "Y"),
       numberOutput("outputTiltX", "Tilt X"), numberOutput("outputTiltY", "Tilt Y"),
       numberOutput("outputPressure", "Pressure"), booleanOutput("outputTipButton", "Tip Button"),
       booleanOutput("outputLowerButton", "Lower Button"),
       booleanOutput("outputUpperButton", "Upper Button")}));
  registry.add(absent("QCAppleRemote", "Remote Control", {},
                      {booleanOutput("outputAvailable", "Remote Available"),
                       booleanOutput("outputUpSignal", "Volume Up Signal"),
                       booleanOutput("outputDownSignal", "Volume Down Signal"),
                       booleanOutput("outputPreviousSignal", "Previous Signal"),
                       booleanOutput("outputNextSignal", "Next Signal"),
                       booleanOutput("outputPlaySignal", "Play Signal"),
                       booleanOutput("outputMenuSignal", "Menu Signal")}));
  registry.add(absent("QCHIDInput", "Human Interface Device", {},
                      {booleanOutput("outputAvailable", "Device Available")}));
  registry.add(absent("QCOSCReceiver", "OSC Receiver", {},
                      {booleanOutput("outputSignal", "Received Signal")}));
  for (const char* name : {"QCMIDINotes", "QCMIDIControllers", "QCMIDIClock"})
    registry.add(absent(name, "MIDI Receiver", {}, {}));
  PatchClass audio = absent("QCAudioInput", "Audio Input",
                            {numberPort("inputInscreasingScale", 1, "Increasing Scale"),
                             numberPort("inputDecreasingScale", 0.1, "Decreasing Scale")},
                            {numberOutput("outputPeak", "Volume Peak"),
                             portOf(PortType::Structure, "outputSpectrum", "Spectrum")});
  audio.status = QStringLiteral("hears silence");
  audio.make = makeEvaluator<SilenceEvaluator>;
  registry.add(std::move(audio));
}

}  // namespace

void registerInputDevicePatches(PatchRegistry& registry) {
  registry.add(
      {.className = QStringLiteral("QCMouse"),
       .title = QStringLiteral("Mouse"),
       .kind = PatchClass::Kind::Provider,
       .timeMode = PatchClass::TimeMode::Idle,
       .ports =
           {{booleanPort("inputResetScroll", false, "Reset Scroll"),
             numberPort("inputScrollFactor", 0.01, "Scroll Factor"),
             booleanPort("inputResetRotation", false, "Reset Rotation"),
             booleanPort("inputResetMagnification", false, "Reset Magnification")},
            {numberOutput("outputX", "X Position"), numberOutput("outputY", "Y Position"),
             booleanOutput("outputButton1", "Left Button"),
             booleanOutput("outputButton2", "Right Button"),
             booleanOutput("outputButton3", "Other Button"),
             numberOutput("outputScrollX", "X Scroll"), numberOutput("outputScrollY", "Y Scroll"),
             numberOutput("outputScrollZ", "Z Scroll"), numberOutput("outputRotation", "Rotation"),
             numberOutput("outputMagnification", "Magnification"),
             numberOutput("outputSwipeX", "X Swipe"), numberOutput("outputSwipeY", "Y Swipe")}},
       .status =
           QStringLiteral("position and buttons come from the host; no scrolling or gestures"),
       .make = makeEvaluator<MouseEvaluator>});
  registry.add({.className = QStringLiteral("QCKeyboard"),
                .title = QStringLiteral("Keyboard"),
                .kind = PatchClass::Kind::Provider,
                .timeMode = PatchClass::TimeMode::Idle,
                .dynamicPorts = QStringLiteral("key_XXXX for each watched key"),
                .addPorts = addKeyPorts,
                .make = makeFromNode<KeyboardEvaluator>});
  registry.add({.className = QStringLiteral("QCMouseInteraction"),
                .title = QStringLiteral("Interaction"),
                .ports = {{numberPort("inputInitialXDrag", 0, "Offset X"),
                           numberPort("inputInitialYDrag", 0, "Offset Y"),
                           numberPort("inputInitialRotateValue", 0, "Offset Rotation"),
                           numberPort("inputInitialMagnifyValue", 1, "Offset Magnification")},
                          interactionOutputs()},
                .status = QStringLiteral("nobody touches the object: only the offsets pass"),
                .make = makeEvaluator<InteractionEvaluator>});
  registerAbsentDevices(registry);
}

}  // namespace runtime::patches
