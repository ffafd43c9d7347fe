#include "runtime/movie/MovieEncoder.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <cstdio>

#include "runtime/movie/PlaneConverter.h"

namespace runtime::movie {

using foundation::failure;
using foundation::Result;

namespace {

/// These two encoders write other bytes with another number of threads. What is rendered must not
/// depend on the machine.
constexpr int fixedThreads = 8;

/// How a codec is made and set up.
struct CodecSettings {
  const char* encoder;
  AVPixelFormat format;
  int threads;  ///< 0: one a core
  std::vector<std::pair<const char*, const char*>> options;
};

CodecSettings settingsOf(MovieCodec codec) {
  switch (codec) {
    case MovieCodec::ProRes4444:
      return {"prores_ks", AV_PIX_FMT_YUVA444P10, 0, {{"profile", "4444"}, {"alpha_bits", "16"}}};
    case MovieCodec::QuickTimeRle:
      return {"qtrle", AV_PIX_FMT_ARGB, 0, {}};
    case MovieCodec::Vp9:
      // Frames that are not shown cannot carry alpha.
      return {"libvpx-vp9",
              AV_PIX_FMT_YUVA420P,
              fixedThreads,
              {{"crf", "18"},
               {"b", "0"},
               {"deadline", "realtime"},
               {"cpu-used", "6"},
               {"row-mt", "1"},
               {"tile-columns", "2"},
               {"auto-alt-ref", "0"},
               {"lag-in-frames", "0"}}};
    case MovieCodec::H264:
      // Looking further ahead takes hundreds of megabytes and saves little.
      return {"libx264",
              AV_PIX_FMT_YUV420P,
              fixedThreads,
              {{"crf", "16"}, {"preset", "medium"}, {"rc-lookahead", "15"}}};
  }
  return {};
}

const char* muxerOf(MovieContainer container) {
  switch (container) {
    case MovieContainer::QuickTime:
      return "mov";
    case MovieContainer::Mpeg4:
      return "mp4";
    case MovieContainer::WebM:
      return "webm";
    case MovieContainer::Matroska:
      return "matroska";
  }
  return "mov";
}

struct OutputDeleter {
  void operator()(AVFormatContext* context) const {
    if (context->pb) avio_closep(&context->pb);
    avformat_free_context(context);
  }
};

}  // namespace

struct MovieEncoder::State {
  QString path;
  QString temporaryPath;
  MovieFormat format;
  std::unique_ptr<AVFormatContext, OutputDeleter> output;
  CodecPtr encoder;
  std::unique_ptr<PlaneConverter> converter;
  AVPixelFormat pixels = AV_PIX_FMT_NONE;
  qint64 added = 0;
  bool hasFile = false;  ///< under the temporary name

  [[nodiscard]] AVStream* track() const { return output->streams[0]; }
  [[nodiscard]] Result<void> openEncoder();
  [[nodiscard]] Result<void> openFile();
  [[nodiscard]] Result<void> encode(const AVFrame* frame);
};

MovieEncoder::MovieEncoder() : m_state(std::make_unique<State>()) {}

MovieEncoder::~MovieEncoder() {
  State& s = *m_state;
  s.output.reset();
  if (s.hasFile) QFile::remove(s.temporaryPath);
}

Result<std::unique_ptr<MovieEncoder>> MovieEncoder::create(const QString& path,
                                                           const MovieFormat& format) {
  silenceFfmpeg();
  if (auto ok = format.check(); !ok) return tl::unexpected(ok.error());
  std::unique_ptr<MovieEncoder> made(new MovieEncoder);
  State& s = *made->m_state;
  s.path = path;
  if (const QFileInfo old(path); old.exists()) {
    // The movie takes the name of the old file, behind links.
    if (!old.isFile())
      return failure(QStringLiteral("cannot be written: it is no ordinary file"), path);
    s.path = old.canonicalFilePath();
  }
  s.temporaryPath =
      QStringLiteral("%1.%2.part").arg(s.path).arg(QCoreApplication::applicationPid());
  s.format = format;
  if (auto done = s.openEncoder(); !done) return tl::unexpected(done.error());
  if (auto done = s.openFile(); !done) return tl::unexpected(done.error());
  const bool byField = format.isInterlaced && s.pixels == AV_PIX_FMT_YUV420P;
  s.converter = std::make_unique<PlaneConverter>(format.size, s.pixels, byField);
  return made;
}

Result<void> MovieEncoder::State::openEncoder() {
  const CodecSettings settings = settingsOf(format.codec);
  const AVCodec* codec = avcodec_find_encoder_by_name(settings.encoder);
  if (!codec)
    return failure(QStringLiteral("FFmpeg has no encoder '%1' on this machine")
                       .arg(QLatin1String(settings.encoder)),
                   path);
  AVFormatContext* context = nullptr;
  avformat_alloc_output_context2(&context, nullptr, muxerOf(format.container), nullptr);
  if (!context) return failure(QStringLiteral("FFmpeg cannot write such files here"), path);
  output.reset(context);
  pixels = settings.format;
  encoder.reset(avcodec_alloc_context3(codec));
  AVCodecContext& e = *encoder;
  e.width = format.size.width();
  e.height = format.size.height();
  e.pix_fmt = pixels;
  e.framerate = {static_cast<int>(format.rateNumerator), static_cast<int>(format.rateDenominator)};
  e.time_base = av_inv_q(e.framerate);
  e.sample_aspect_ratio = {1, 1};
  e.thread_count = format.threads > 0 ? format.threads : settings.threads;
  if (e.thread_count == 0) e.thread_count = QThread::idealThreadCount();
  // One key frame a second, so that any place is found fast.
  e.gop_size = std::max(1, static_cast<int>(format.rateNumerator / format.rateDenominator));
  if (pixels != AV_PIX_FMT_ARGB) {
    e.color_range = AVCOL_RANGE_MPEG;
    e.color_primaries = AVCOL_PRI_BT709;
    e.color_trc = AVCOL_TRC_BT709;
    e.colorspace = AVCOL_SPC_BT709;
  }
  e.field_order = format.isInterlaced ? AV_FIELD_TT : AV_FIELD_PROGRESSIVE;
  if (format.isInterlaced) e.flags |= AV_CODEC_FLAG_INTERLACED_DCT | AV_CODEC_FLAG_INTERLACED_ME;
  if (format.codec == MovieCodec::ProRes4444) {
    // The coarser of the profile's two steps at once, instead of a search among them.
    e.flags |= AV_CODEC_FLAG_QSCALE;
    e.global_quality = 2 * FF_QP2LAMBDA;
  }
  if ((output->oformat->flags & AVFMT_GLOBALHEADER) != 0) e.flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
  AVDictionary* options = nullptr;
  for (const auto& [name, value] : settings.options) av_dict_set(&options, name, value, 0);
  const int code = avcodec_open2(encoder.get(), codec, &options);
  av_dict_free(&options);
  if (code < 0) return ffmpegFailure(QStringLiteral("cannot be encoded"), code, path);
  return {};
}

Result<void> MovieEncoder::State::openFile() {
  AVStream* made = avformat_new_stream(output.get(), nullptr);
  if (!made) return failure(QStringLiteral("memory runs out"), path);
  avcodec_parameters_from_context(made->codecpar, encoder.get());
  made->time_base = encoder->time_base;
  made->avg_frame_rate = encoder->framerate;
  made->sample_aspect_ratio = {1, 1};
  const QByteArray address = "file:" + QFile::encodeName(temporaryPath);
  int code = avio_open(&output->pb, address.constData(), AVIO_FLAG_WRITE);
  if (code < 0) return ffmpegFailure(QStringLiteral("cannot be written"), code, path);
  hasFile = true;
  // The same frames make the same bytes.
  output->flags |= AVFMT_FLAG_BITEXACT;
  code = avformat_write_header(output.get(), nullptr);
  if (code < 0) return ffmpegFailure(QStringLiteral("cannot be written"), code, path);
  return {};
}

Result<QByteArray> MovieEncoder::convert(const uchar* rgba, qsizetype bytesPerLine) const {
  return m_state->converter->convert(rgba, bytesPerLine);
}

Result<void> MovieEncoder::add(const QByteArray& converted) {
  State& s = *m_state;
  const FramePtr frame(av_frame_alloc());
  frame->width = s.format.size.width();
  frame->height = s.format.size.height();
  frame->format = s.pixels;
  frame->pts = s.added++;
  frame->interlaced_frame = s.format.isInterlaced ? 1 : 0;
  frame->top_field_first = frame->interlaced_frame;
  frame->color_range = s.encoder->color_range;
  frame->color_primaries = s.encoder->color_primaries;
  frame->color_trc = s.encoder->color_trc;
  frame->colorspace = s.encoder->colorspace;
  s.converter->place(converted, *frame);
  // Encoders that keep frames for a while do so by reference: the bytes live as long as that.
  auto* bytes = new QByteArray(converted);
  frame->buf[0] = av_buffer_create(
      reinterpret_cast<uint8_t*>(const_cast<char*>(bytes->constData())),
      static_cast<size_t>(bytes->size()),
      [](void* owner, uint8_t*) { delete static_cast<QByteArray*>(owner); }, bytes,
      AV_BUFFER_FLAG_READONLY);
  if (!frame->buf[0]) {
    delete bytes;
    return failure(QStringLiteral("memory runs out"), s.path);
  }
  return s.encode(frame.get());
}

Result<void> MovieEncoder::State::encode(const AVFrame* frame) {
  int code = avcodec_send_frame(encoder.get(), frame);
  if (code < 0) return ffmpegFailure(QStringLiteral("cannot be encoded"), code, path);
  const PacketPtr packet(av_packet_alloc());
  for (;;) {
    code = avcodec_receive_packet(encoder.get(), packet.get());
    if (code == AVERROR(EAGAIN) || code == AVERROR_EOF) break;
    if (code < 0) return ffmpegFailure(QStringLiteral("cannot be encoded"), code, path);
    if (packet->duration == 0) packet->duration = 1;
    av_packet_rescale_ts(packet.get(), encoder->time_base, track()->time_base);
    packet->stream_index = 0;
    code = av_interleaved_write_frame(output.get(), packet.get());
    if (code >= 0) code = output->pb->error;
    if (code < 0) return ffmpegFailure(QStringLiteral("cannot be written"), code, path);
  }
  return {};
}

Result<void> MovieEncoder::finish() {
  State& s = *m_state;
  if (auto done = s.encode(nullptr); !done) return done;
  int code = av_write_trailer(s.output.get());
  const int closed = avio_closep(&s.output->pb);
  if (code >= 0) code = closed;
  if (code < 0) return ffmpegFailure(QStringLiteral("cannot be written"), code, s.path);
  if (std::rename(QFile::encodeName(s.temporaryPath).constData(),
                  QFile::encodeName(s.path).constData()) != 0)
    return ffmpegFailure(QStringLiteral("cannot be written"), AVERROR(errno), s.path);
  s.hasFile = false;
  return {};
}

}  // namespace runtime::movie
