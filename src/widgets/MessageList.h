#pragma once

#include <QScrollArea>

namespace widgets {

/// Rows in a frame, for instance the files that a message is about; scrolls beyond eight.
class MessageList : public QScrollArea {
  Q_OBJECT
 public:
  /// A row is "text", or "glyph\ttext".
  explicit MessageList(const QStringList& rows, QWidget* parent = nullptr);
};

}  // namespace widgets
