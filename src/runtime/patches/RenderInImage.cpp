#include "runtime/Execution.h"
#include "runtime/PatchRegistry.h"
#include "runtime/draw/DrawnImage.h"
#include "runtime/patches/AllPatches.h"

namespace runtime::patches {

namespace {

/// Draws its content into an image of its own. The image is drawn when its pixels are first needed,
/// and stays the same as long as the content draws the same.
class RenderInImageEvaluator : public PatchEvaluator {
 public:
  explicit RenderInImageEvaluator(const NodeDescription& node)
      : m_keepsContent(!node.state.value(u"noFeedback").toBool(true)) {}

  void execute(Execution& x) override {
    enum { Render, Target, Mipmaps, Width, Height };
    if (!x.boolean(Render)) return;
    Destination inner;
    inner.pixelsWide = side(x.index(Width), x.destination().pixelsWide);
    inner.pixelsHigh = side(x.index(Height), x.destination().pixelsHigh);
    if (qint64{inner.pixelsWide} * inner.pixelsHigh > x.budget().imagePixels) {
      x.report(QStringLiteral("an image of %1 × %2 pixels is too large")
                   .arg(inner.pixelsWide)
                   .arg(inner.pixelsHigh));
      x.setOutput(0, Value());
      return;
    }
    ContentContext context;
    context.destination = inner;
    DrawList list;
    context.list = &list;
    x.runContent(context);
    const QSize size(inner.pixelsWide, inner.pixelsHigh);
    if (!m_keepsContent && m_size == size && m_source && list == m_source->list()) return;
    QImage before = m_keepsContent && m_source && m_size == size ? m_source->bitmap() : QImage();
    m_size = size;
    m_source = std::make_shared<DrawnImage>(std::move(list), size, std::move(before));
    if (m_keepsContent) (void)m_source->bitmap();  // else every frame would hold all earlier ones
    x.setOutput(0, Image(m_source));
  }

 private:
  static int side(quint64 wanted, int around) {
    return wanted == 0 ? around : static_cast<int>(std::min<quint64>(wanted, 32768));
  }
  bool m_keepsContent;
  QSize m_size;
  std::shared_ptr<const DrawnImage> m_source;
};

}  // namespace

void registerRenderInImage(PatchRegistry& registry) {
  const auto index = [](const QString& key, const QString& label) {
    return Port(key, PortType::Index, {}, label);
  };
  registry.add({.className = QStringLiteral("QCRenderInImage"),
                .title = QStringLiteral("Render in Image"),
                .kind = PatchClass::Kind::Macro,
                .ports = {{Port(QStringLiteral("inputRender"), PortType::Boolean, true,
                                QStringLiteral("Render")),
                           index(QStringLiteral("inputTarget"), QStringLiteral("Texture Target"))
                               .titles({QStringLiteral("Rectangle"), QStringLiteral("2D")}),
                           Port(QStringLiteral("inputMipmaps"), PortType::Boolean, {},
                                QStringLiteral("Texture Mipmapping")),
                           index(QStringLiteral("inputWidth"), QStringLiteral("Pixels Wide")),
                           index(QStringLiteral("inputHeight"), QStringLiteral("Pixels High"))},
                          {Port(QStringLiteral("outputImage"), PortType::Image, {},
                                QStringLiteral("Image"))}},
                .dynamicPorts = QStringLiteral("its published ports"),
                .drawsOffscreen = true,
                .make = makeFromNode<RenderInImageEvaluator>});
}

}  // namespace runtime::patches
