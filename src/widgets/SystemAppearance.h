#pragma once

#include <QObject>

class QDBusVariant;

namespace widgets {

/// What the desktop asks of its programs, through the desktop portal on the session bus; without
/// one, darkness is read off the palette that the program started with.
class SystemAppearance : public QObject {
  Q_OBJECT
 public:
  explicit SystemAppearance(QObject* parent = nullptr);

  [[nodiscard]] bool dark() const { return m_dark; }
  [[nodiscard]] bool highContrast() const { return m_highContrast; }
  [[nodiscard]] bool reducedMotion() const { return m_reducedMotion; }

 Q_SIGNALS:
  void changed();

 private Q_SLOTS:
  void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

 private:
  void read(const QString& key);
  bool take(const QString& key, const QVariant& value);

  bool m_dark = true;
  bool m_highContrast = false;
  bool m_reducedMotion = false;
};

}  // namespace widgets
