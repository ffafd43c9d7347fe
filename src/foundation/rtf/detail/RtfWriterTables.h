#pragma once

#include <QColor>
#include <QHash>
#include <QStringList>

namespace foundation::detail {

/// The fonts and colours of a text that is being written, numbered in the order of their use.
class RtfWriterTables {
 public:
  /// From 1 on: 0 is what texts have that name no font.
  [[nodiscard]] int fontNumber(const QString& family);
  /// From 1 on; 0, the automatic colour, for an invalid colour. Colours have 8 bits a component.
  [[nodiscard]] int colorNumber(const QColor& color);

  /// The tables as RTF; nothing for empty ones.
  [[nodiscard]] QByteArray fontTable() const;
  [[nodiscard]] QByteArray colorTable() const;

 private:
  [[nodiscard]] QByteArray expandedColorTable() const;

  QStringList m_families;
  QHash<QString, int> m_fontNumbers;
  QList<QRgb> m_colors;
  QHash<QRgb, int> m_colorNumbers;
};

/// Text with everything escaped that RTF reserves or ASCII lacks.
void appendRtfText(QByteArray& rtf, QStringView text);

}  // namespace foundation::detail
