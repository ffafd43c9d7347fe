#include "document/psd/PsdWarnings.h"

namespace document {

namespace {

constexpr int kMostNames = 8;

}  // namespace

QStringList PsdWarnings::texts() const {
  const auto sentenceFor = [](Reason reason) -> QString {
    switch (reason) {
      case Reason::Blending:
        return tr("Blend modes are not imported; drawn normally: %1.");
      case Reason::Clipping:
        return tr("Not clipped to the layer below: %1.");
      case Reason::Effects:
        return tr("Layer effects are not imported: %1.");
      case Reason::VectorMask:
        return tr("Vector masks are not imported: %1.");
      case Reason::NoPixels:
        return tr("Left out, because they hold no pixels of their own: %1.");
      case Reason::Damaged:
        return tr("Left out, because their data is damaged or incomplete: %1.");
      case Reason::Place:
        return tr("Left out, because their size or place is out of limits: %1.");
      case Reason::TooLarge:
        return tr("Left out, because all layers together have too many pixels: %1.");
    }
    return {};
  };
  QStringList texts = m_sentences;
  for (const auto& [reason, layers] : m_layers) {
    QString names =
        layers.first(std::min<qsizetype>(layers.size(), kMostNames)).join(QStringLiteral(", "));
    if (layers.size() > kMostNames)
      names = tr("%1 and %2 more").arg(names, QString::number(layers.size() - kMostNames));
    texts.append(sentenceFor(reason).arg(names));
  }
  return texts;
}

}  // namespace document
