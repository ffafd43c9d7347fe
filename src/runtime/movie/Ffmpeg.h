#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/avutil.h>
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

#include <memory>

#include "foundation/Result.h"

/// FFmpeg's objects with owners, and its errors in words. Only for the sources of runtime/movie:
/// its headers stay free of FFmpeg's.
namespace runtime::movie {

struct FfmpegDeleter {
  void operator()(AVFormatContext* context) const;  ///< of a file being read
  void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
  void operator()(AVFrame* frame) const { av_frame_free(&frame); }
  void operator()(AVPacket* packet) const { av_packet_free(&packet); }
  void operator()(SwsContext* context) const { sws_freeContext(context); }
};
using InputPtr = std::unique_ptr<AVFormatContext, FfmpegDeleter>;
using CodecPtr = std::unique_ptr<AVCodecContext, FfmpegDeleter>;
using FramePtr = std::unique_ptr<AVFrame, FfmpegDeleter>;
using PacketPtr = std::unique_ptr<AVPacket, FfmpegDeleter>;
using ScalerPtr = std::unique_ptr<SwsContext, FfmpegDeleter>;

/// Keeps the libraries from writing to standard error; what they would have said last is kept for
/// the next failure of the thread. Call before any other use of the libraries.
void silenceFfmpeg();

/// A failure with the library's reason (none for error 0), and its last remark on this thread as
/// the detail.
[[nodiscard]] tl::unexpected<foundation::Error> ffmpegFailure(const QString& what, int error,
                                                              const QString& file);

/// Full-range RGB on one side and YUV of the frame's (BT.709 or BT.601) matrix and range on the
/// other. Neither side matters for formats that are RGB.
void setColorMatrix(SwsContext* scaler, int sourceSpace, bool sourceFullRange, int targetSpace,
                    bool targetFullRange);

constexpr int scalerFlags = SWS_BILINEAR | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT | SWS_BITEXACT;

}  // namespace runtime::movie
