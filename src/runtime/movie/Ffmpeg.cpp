#include "runtime/movie/Ffmpeg.h"

#include <cstdarg>
#include <mutex>

namespace runtime::movie {

namespace {

thread_local QString lastRemark;

void keepRemark(void* object, int level, const char* format, va_list arguments) {
  if (level > AV_LOG_ERROR) return;
  char line[512];
  int prefix = 0;  // without the name and address of the object
  av_log_format_line2(object, level, format, arguments, line, sizeof line, &prefix);
  lastRemark = QString::fromUtf8(line).trimmed();
}

}  // namespace

void FfmpegDeleter::operator()(AVFormatContext* context) const {
  avformat_close_input(&context);
}

void silenceFfmpeg() {
  static std::once_flag once;
  std::call_once(once, [] { av_log_set_callback(keepRemark); });
  lastRemark.clear();
}

tl::unexpected<foundation::Error> ffmpegFailure(const QString& what, int error,
                                                const QString& file) {
  char reason[AV_ERROR_MAX_STRING_SIZE] = {};
  QString text;
  if (error == AVERROR_INVALIDDATA)
    text = QStringLiteral("its data are damaged or no movie");
  else if (error != 0 && av_strerror(error, reason, sizeof reason) == 0)
    text = QString::fromUtf8(reason);
  const QString detail = std::exchange(lastRemark, {});
  return foundation::failure(text.isEmpty() ? what : QStringLiteral("%1: %2").arg(what, text), file,
                             detail == text ? QString() : detail);
}

void setColorMatrix(SwsContext* scaler, int sourceSpace, bool sourceFullRange, int targetSpace,
                    bool targetFullRange) {
  constexpr int one = 1 << 16;
  // Fails for conversions that have no matrix, which need none.
  (void)sws_setColorspaceDetails(scaler, sws_getCoefficients(sourceSpace), sourceFullRange ? 1 : 0,
                                 sws_getCoefficients(targetSpace), targetFullRange ? 1 : 0, 0, one,
                                 one);
}

}  // namespace runtime::movie
