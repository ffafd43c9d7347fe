#pragma once

#include <QList>
#include <QWidget>

class QAbstractButton;

namespace model {
class Attribute;
}

namespace widgets {
class TYKeyDiamond;
}

namespace inspector {

class InspectorContext;

/// The key frames of the attributes that one row edits: a diamond that sets and removes one at the
/// current time, and while they are animated a way to the previous and the next. The arrow keys do
/// the same as the two.
class KeyFrameControl : public QWidget {
  Q_OBJECT

 public:
  static constexpr int columnWidth = 34;

  explicit KeyFrameControl(InspectorContext& context, QWidget* parent = nullptr);

  /// Those of them that can be animated count; without any the control is empty.
  void setAttributes(const QList<model::Attribute*>& attributes, const QString& name);
  void refresh();
  void toggleKeyFrame();
  /// To the nearest key frame before (−1) or after (1) the current time.
  void jump(int direction);
  [[nodiscard]] bool isAnimated() const;
  [[nodiscard]] bool isEmpty() const { return m_attributes.isEmpty(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] double time() const;
  /// Those that a new key frame here is for: of each component the animated ones, or all.
  [[nodiscard]] QList<model::Attribute*> attributesWithoutKeyFrame() const;
  /// NaN where there is none.
  [[nodiscard]] double neighbour(int direction) const;

  InspectorContext& m_context;
  widgets::TYKeyDiamond* m_diamond;
  QAbstractButton* m_previous;
  QAbstractButton* m_next;
  QList<model::Attribute*> m_attributes;
  QString m_name;
};

}  // namespace inspector
