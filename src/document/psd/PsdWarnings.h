#pragma once

#include <QCoreApplication>
#include <QStringList>
#include <map>

namespace document {

/// What an import leaves out, one sentence a reason however many layers it concerns.
class PsdWarnings {
  Q_DECLARE_TR_FUNCTIONS(PsdWarnings)

 public:
  enum class Reason : quint8 {
    Blending,
    Clipping,
    Effects,
    VectorMask,
    NoPixels,
    Damaged,
    Place,
    TooLarge
  };

  void add(Reason reason, const QString& layer) { m_layers[reason].append(layer); }
  void add(const QString& sentence) { m_sentences.append(sentence); }
  [[nodiscard]] QStringList texts() const;

 private:
  QStringList m_sentences;
  std::map<Reason, QStringList> m_layers;
};

}  // namespace document
