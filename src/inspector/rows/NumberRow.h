#pragma once

#include <limits>

#include "inspector/rows/InspectorRow.h"

class QSlider;

namespace widgets {
class TYNumberField;
}

namespace inspector {

class FieldBinder;

/// How a number is typed and shown.
struct NumberFormat {
  QString prefix = {};  ///< inside the field
  QString unit = {};
  QString name = {};  ///< for people who hear the window; the row's label unless set
  double minimum = -1e9;
  double maximum = 1e9;
  int decimals = 2;
  double step = 1;
};

/// One number, or a pair of them; a number with narrow limits has a slider too.
class NumberRow : public InspectorRow {
  Q_OBJECT

 public:
  enum class Slider { Without, With };

  NumberRow(InspectorContext& context, const QString& label, const QList<NumberFormat>& formats,
            Slider slider = Slider::Without);

  using InspectorRow::bind;
  void bind(const QList<Binding>& bindings) override;

 protected:
  void showValues() override;
  void nameControls(const QString& name) override;

 private:
  void addSlider();
  void showSlider();
  void slide(int position);

  QList<NumberFormat> m_formats;
  QList<widgets::TYNumberField*> m_fields;
  QList<FieldBinder*> m_binders;
  QSlider* m_slider = nullptr;
};

}  // namespace inspector
