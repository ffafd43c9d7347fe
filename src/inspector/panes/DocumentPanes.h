#pragma once

#include "inspector/panes/InspectorPane.h"
#include "store/Observation.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace model {
class Ruler;
class StopFrame;
}  // namespace model

namespace inspector {

class CheckRow;
class ColorRow;
class FileRow;
class ImageRow;
class NumberRow;
class PaneLine;
class PosterPicture;
class SegmentsRow;
class TextRow;
class TimeRow;

/// The video format of the document.
class FormatPane : public InspectorPane {
  Q_OBJECT

 public:
  explicit FormatPane(InspectorContext& context);
  void refresh() override;

 private:
  QComboBox* m_formats;
  QLabel* m_picture;
};

/// Duration and poster frame.
class DocumentTimingPane : public InspectorPane {
  Q_OBJECT

 public:
  explicit DocumentTimingPane(InspectorContext& context);
  void takeSelection() override;
  void refresh() override;

 private:
  TimeRow* m_duration;
  TimeRow* m_poster;
  ImageRow* m_picture;  ///< stands for a document without a poster frame
  PosterPicture* m_frame;
  PaneLine* m_frameLine;
  QPushButton* m_none;
};

/// What is seen behind the components.
class BackgroundPane : public InspectorPane {
  Q_OBJECT

 public:
  explicit BackgroundPane(InspectorContext& context);
  void takeSelection() override;
  void refresh() override;

 private:
  SegmentsRow* m_mode;
  ColorRow* m_color;
  ImageRow* m_image;
  FileRow* m_movie;
};

/// Safe areas, rulers, and the guides with their positions.
class OverlaysPane : public InspectorPane {
  Q_OBJECT

 public:
  explicit OverlaysPane(InspectorContext& context);
  void takeSelection() override;
  void refresh() override;
  void letGo() override;

 private:
  [[nodiscard]] QList<model::Ruler*> guides() const;
  void bindGuides();
  void addGuide(Qt::Orientation line);

  CheckRow* m_safeAreas;
  CheckRow* m_rulers;
  QLabel* m_count;
  QList<NumberRow*> m_positions;
  QList<model::Ruler*> m_bound;
};

/// The texts of the stop frames.
class StopFramesPane : public InspectorPane {
  Q_OBJECT

 public:
  explicit StopFramesPane(InspectorContext& context);
  void takeSelection() override;
  void refresh() override;
  void letGo() override;

 private:
  void bindStopFrames();

  QList<TextRow*> m_texts;
  QList<model::StopFrame*> m_bound;
  QLabel* m_empty;
};

}  // namespace inspector
