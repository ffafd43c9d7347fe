#pragma once

#include <QObject>

#include "preview/FileBackdrop.h"

namespace preview {

/// Puts one file after the other behind the picture: each goes on until the next one has its first
/// picture, and longer when that one cannot be read.
class BackdropLoader : public QObject {
  Q_OBJECT

 public:
  using Kind = BackdropSource::Kind;
  explicit BackdropLoader(QObject* parent = nullptr);
  ~BackdropLoader() override;

  void load(Kind kind, const QString& path);
  /// Nothing is read or played any more.
  void clear();
  /// Pixels that pictures are wanted in.
  void setSize(const QSize& size);
  /// Movies play from their beginning.
  void beginAnew();

 Q_SIGNALS:
  /// The file that was asked for last is there; its first picture follows.
  void replaced(preview::BackdropSource::Kind kind, const QString& path);
  void pictureReady(const QImage& image);
  /// The file that was asked for cannot be shown, or the present one any further.
  void failed(preview::BackdropSource::Kind kind, const foundation::Error& error);

 private:
  void takeImage(int number);
  void takeFailure(int number, Kind kind, const foundation::Error& error);

  QSize m_size{1920, 1080};
  int m_number = 0;         ///< of the next file, or else of the present one
  int m_presentNumber = 0;  ///< states of others are not looked at
  std::unique_ptr<FileBackdrop> m_present;
  std::unique_ptr<FileBackdrop> m_next;
};

}  // namespace preview
