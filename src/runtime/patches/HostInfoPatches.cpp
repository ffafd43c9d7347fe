#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/patches/AllPatches.h"
#include "runtime/patches/PortHelpers.h"

namespace runtime::patches {

namespace {

/// A picture must not depend on the machine that draws it, nor tell about it: all machines give the
/// same neutral answers.
class HostInfoEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    for (const int name : {2, 3, 5}) x.setOutput(name, QStringLiteral("localhost"));
    x.setOutput(4, QStringLiteral("127.0.0.1"));
  }
};

class OpenGLInfoEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    x.setOutput(0, QStringLiteral("Software"));
    x.setOutput(1, QStringLiteral("Software"));
    x.setOutput(2, 2.1);
    x.setOutput(4, Value::index(16));
    x.setOutput(5, Value::index(16384));
    x.setOutput(6, Value::index(16384));
    x.setOutput(7, Value::index(32));
  }
};

class InfoEvaluator : public PatchEvaluator {
 public:
  void execute(Execution& x) override {
    x.setOutput(0, 5.0);
    x.setOutput(1, false);
  }
};

PatchClass info(const char* className, const char* title, QList<Port> outputs) {
  PatchClass patch;
  patch.className = QString::fromLatin1(className);
  patch.title = QString::fromLatin1(title);
  patch.ports.outputs = std::move(outputs);
  patch.status = QStringLiteral("gives the same neutral answers on every machine");
  return patch;
}

}  // namespace

void registerHostInfoPatches(PatchRegistry& registry) {
  PatchClass host = info(
      "QCHostInfo", "Host Info",
      {stringOutput("outputUserName", "User Name"),
       stringOutput("outputLongUserName", "Long User Name"),
       stringOutput("outputComputerName", "Computer Name"),
       stringOutput("outputHostName", "Host Name"), stringOutput("outputIPAddress", "IP Address"),
       stringOutput("outputMachineName", "Machine Name"),
       stringOutput("outputOSVersion", "OS Version"),
       stringOutput("outputKernelVersion", "Kernel Version"),
       indexOutput("outputRAMSize", "RAM Size"), stringOutput("outputCPUType", "CPU Type")});
  host.make = makeEvaluator<HostInfoEvaluator>;
  registry.add(std::move(host));

  PatchClass openGL = info("QCOpenGLInfo", "OpenGL Info",
                           {stringOutput("outputVendor", "Renderer Vendor"),
                            stringOutput("outputRenderer", "Renderer Name"),
                            numberOutput("outputVersion", "Renderer Version"),
                            indexOutput("outputVRAM", "Renderer VRAM"),
                            indexOutput("outputTextureUnits", "Texture Units"),
                            indexOutput("outputMaxTextureSize", "Max Texture Size"),
                            indexOutput("outputMaxRenderSize", "Max Render Size"),
                            indexOutput("outputBitsPerPixel", "Rendering Bits Per Pixel"),
                            booleanOutput("outputFloatComponents", "Float Components Rendering"),
                            booleanOutput("outputCIAccelerated", "Core Image Accelerated")});
  openGL.make = makeEvaluator<OpenGLInfoEvaluator>;
  registry.add(std::move(openGL));

  PatchClass runtimeInfo = info("QCInfo", "Runtime Info",
                                {numberOutput("outputVersion", "Runtime Version"),
                                 booleanOutput("outputSafeMode", "Safe Mode")});
  runtimeInfo.make = makeEvaluator<InfoEvaluator>;
  registry.add(std::move(runtimeInfo));
}

}  // namespace runtime::patches
