#include "runtime/movie/MovieStream.h"

#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <cmath>
#include <cstring>

extern "C" {
#include <libavutil/parseutils.h>
}

namespace runtime::movie {

using foundation::failure;
using foundation::Result;

namespace {

constexpr qint64 lastTick = qint64{1} << 60;

/// Containers that hold their pictures themselves; lists that name other files or addresses are
/// left out.
constexpr const char* containers =
    "mov,mp4,matroska,webm,avi,mpegts,mpeg,mxf,ogg,flv,gif,apng,asf,dv,nut";

int interrupted(void* stream) {
  return static_cast<const MovieStream*>(stream)->mustStop() ? 1 : 0;
}

/// The library's own decoders of VP8 and VP9 leave the alpha out.
const AVCodec* decoderFor(const AVStream& track) {
  const AVDictionaryEntry* alpha = av_dict_get(track.metadata, "alpha_mode", nullptr, 0);
  const AVCodec* decoder = nullptr;
  if (alpha && std::strcmp(alpha->value, "1") == 0) {
    if (track.codecpar->codec_id == AV_CODEC_ID_VP9)
      decoder = avcodec_find_decoder_by_name("libvpx-vp9");
    if (track.codecpar->codec_id == AV_CODEC_ID_VP8)
      decoder = avcodec_find_decoder_by_name("libvpx");
  }
  return decoder ? decoder : avcodec_find_decoder(track.codecpar->codec_id);
}

bool isUsable(const AVRational& rate) {
  return rate.num > 0 && rate.den > 0 && av_q2d(rate) <= 1000 && av_q2d(rate) >= 0.001;
}

/// Containers that keep the time of a picture in rounded units give a rate that is off by little.
AVRational broadcastRate(const AVRational& rate) {
  for (const int nominal : {24, 30, 48, 60, 120}) {
    const AVRational exact{nominal * 1000, 1001};
    if (std::abs(av_q2d(rate) / av_q2d(exact) - 1) < 1e-5) return exact;
  }
  return rate;
}

AVRational averageRate(AVFormatContext* input, AVStream* track) {
  if (isUsable(track->avg_frame_rate)) return broadcastRate(track->avg_frame_rate);
  const AVRational guess = av_guess_frame_rate(input, track, nullptr);
  return isUsable(guess) ? guess : AVRational{25, 1};
}

/// Looking at the tracks decodes some of their pictures: under the same bounds as later.
int findTracks(AVFormatContext& input, const MovieLimits& limits) {
  std::vector<AVDictionary*> options(input.nb_streams, nullptr);
  for (AVDictionary*& each : options) {
    av_dict_set_int(&each, "max_pixels", limits.largestPixels, 0);
    av_dict_set_int(&each, "threads", 1, 0);
  }
  const int code = avformat_find_stream_info(&input, options.empty() ? nullptr : options.data());
  for (AVDictionary*& each : options) av_dict_free(&each);
  return code;
}

/// Each thread holds pictures of its own.
int threadsFor(qint64 pixels) {
  constexpr qint64 largePicture = 10'000'000;
  return pixels > largePicture ? 2 : std::min(QThread::idealThreadCount(), 8);
}

}  // namespace

Result<std::unique_ptr<MovieStream>> MovieStream::open(const QString& path,
                                                       const MovieLimits& limits,
                                                       const std::atomic<bool>& stop) {
  silenceFfmpeg();
  if (!QFileInfo::exists(path)) return failure(QStringLiteral("there is no such movie"), path);
  if (!QFileInfo(path).isFile()) return failure(QStringLiteral("is not a movie file"), path);
  std::unique_ptr<MovieStream> stream(new MovieStream(path, limits, stop));
  stream->beginRequest();
  if (const auto done = stream->openFile(); !done) return tl::unexpected(done.error());
  if (const auto done = stream->openDecoder(); !done) return tl::unexpected(done.error());
  stream->describe();
  return stream;
}

void MovieStream::beginRequest() {
  m_clock.start();
  m_packetsRead = 0;
}

bool MovieStream::mustStop() const {
  return m_stop || m_clock.elapsed() > 1000LL * m_limits.seconds;
}

Result<void> MovieStream::openFile() {
  AVFormatContext* context = avformat_alloc_context();
  context->interrupt_callback = {interrupted, this};
  context->max_streams = m_limits.streams;
  AVDictionary* options = nullptr;
  av_dict_set(&options, "protocol_whitelist", "file", 0);
  av_dict_set(&options, "format_whitelist", containers, 0);
  const QByteArray address = "file:" + QFile::encodeName(m_path);
  int code = avformat_open_input(&context, address.constData(), nullptr, &options);
  av_dict_free(&options);
  if (code < 0) return ffmpegFailure(QStringLiteral("cannot be opened as a movie"), code, m_path);
  m_input.reset(context);
  code = findTracks(*context, m_limits);
  if (code < 0) return ffmpegFailure(QStringLiteral("cannot be read as a movie"), code, m_path);
  m_track = av_find_best_stream(context, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  if (m_track < 0) return failure(QStringLiteral("holds no pictures"), m_path);
  for (unsigned i = 0; i < context->nb_streams; ++i)
    if (static_cast<int>(i) != m_track) context->streams[i]->discard = AVDISCARD_ALL;
  return {};
}

Result<void> MovieStream::openDecoder() {
  const AVCodecParameters& parameters = *track()->codecpar;
  const qint64 pixels = qint64{parameters.width} * parameters.height;
  if (pixels > m_limits.largestPixels)
    return failure(QStringLiteral("pictures of %1 × %2 pixels are too large")
                       .arg(parameters.width)
                       .arg(parameters.height),
                   m_path);
  const AVCodec* decoder = decoderFor(*track());
  if (!decoder)
    return failure(QStringLiteral("its pictures are coded in a way that is not known (%1)")
                       .arg(QLatin1String(avcodec_get_name(parameters.codec_id))),
                   m_path);
  m_decoder.reset(avcodec_alloc_context3(decoder));
  avcodec_parameters_to_context(m_decoder.get(), &parameters);
  m_decoder->pkt_timebase = track()->time_base;
  m_decoder->max_pixels = m_limits.largestPixels;
  m_decoder->thread_count = threadsFor(pixels);
  const int code = avcodec_open2(m_decoder.get(), decoder, nullptr);
  if (code < 0) return ffmpegFailure(QStringLiteral("cannot be decoded"), code, m_path);
  return {};
}

void MovieStream::describe() {
  const AVCodecParameters& parameters = *track()->codecpar;
  const AVRational rate = averageRate(m_input.get(), track());
  m_info.size = QSize(parameters.width, parameters.height);
  m_info.rateNumerator = rate.num;
  m_info.rateDenominator = rate.den;
  m_info.tick = av_q2d(track()->time_base);
  m_info.codec = QLatin1String(avcodec_get_name(parameters.codec_id));
  m_info.isInterlaced = parameters.field_order > AV_FIELD_PROGRESSIVE;
  const double frames = duration() * av_q2d(rate);
  m_info.frames = std::max<qint64>(1, std::llround(frames));
  const bool whole = std::abs(frames - static_cast<double>(m_info.frames)) < 0.1;
  m_info.duration = (whole ? static_cast<double>(m_info.frames) : frames) / av_q2d(rate);
  m_start = track()->start_time;
}

double MovieStream::duration() {
  constexpr double longest = 1e9;
  double seconds = 0;
  int64_t tagged = 0;
  m_knowsLength = true;
  const AVDictionaryEntry* tag = av_dict_get(track()->metadata, "DURATION", nullptr, 0);
  if (track()->duration > 0)
    seconds = static_cast<double>(track()->duration) * m_info.tick;
  else if (tag && av_parse_time(&tagged, tag->value, 1) >= 0)
    seconds = static_cast<double>(tagged) / AV_TIME_BASE;
  else if (track()->nb_frames > 0)
    seconds = static_cast<double>(track()->nb_frames) / m_info.framesPerSecond();
  else
    m_knowsLength = false;
  if (!m_knowsLength && m_input->duration > 0)
    seconds = static_cast<double>(m_input->duration) / AV_TIME_BASE;
  return std::clamp(seconds, 0.0, longest);
}

bool MovieStream::isIntraOnly() const {
  const AVCodecDescriptor* codec = avcodec_descriptor_get(track()->codecpar->codec_id);
  return codec && (codec->props & AV_CODEC_PROP_INTRA_ONLY) != 0;
}

Result<void> MovieStream::checkBounds() {
  if (m_packetsRead > m_limits.packets || m_clock.elapsed() > 1000LL * m_limits.seconds)
    return failure(QStringLiteral("takes too long to decode"), m_path);
  if (m_stop) return failure(QStringLiteral("was stopped"), m_path);
  return {};
}

/// Gives the decoder one more packet, or the sign that there is none.
Result<void> MovieStream::feed() {
  for (;;) {
    if (auto ok = checkBounds(); !ok) return ok;
    ++m_packetsRead;
    const int read = av_read_frame(m_input.get(), m_packet.get());
    if (read < 0) {
      if (auto ok = checkBounds(); !ok) return ok;
      if (read != AVERROR_EOF) m_damaged = true;
      m_drained = true;
      (void)avcodec_send_packet(m_decoder.get(), nullptr);
      return {};
    }
    const bool ours = m_packet->stream_index == m_track;
    if (ours && (m_packet->flags & AV_PKT_FLAG_CORRUPT) != 0) m_damaged = true;
    const int sent = ours ? avcodec_send_packet(m_decoder.get(), m_packet.get()) : 0;
    av_packet_unref(m_packet.get());
    if (sent == AVERROR(ENOMEM)) return ffmpegFailure(QStringLiteral("decoding"), sent, m_path);
    if (sent < 0) m_damaged = true;  // the pictures that can be decoded are shown
    if (ours && sent >= 0) return {};
  }
}

Result<std::optional<StreamFrame>> MovieStream::next() {
  StreamFrame picture{FramePtr(av_frame_alloc()), 0};
  for (;;) {
    const int code = avcodec_receive_frame(m_decoder.get(), picture.frame.get());
    if (code == 0) {
      if (picture.frame->decode_error_flags != 0) m_damaged = true;
      picture.tick = tickOf(*picture.frame);
      return picture;
    }
    if (code == AVERROR_EOF) {
      noteEnd();
      return std::nullopt;
    }
    if (code == AVERROR(EAGAIN)) {
      if (m_drained) return std::nullopt;
      if (auto fed = feed(); !fed) return tl::unexpected(fed.error());
      continue;
    }
    m_damaged = true;
    if (auto ok = checkBounds(); !ok) return tl::unexpected(ok.error());
    if (code == AVERROR(ENOMEM)) return ffmpegFailure(QStringLiteral("decoding"), code, m_path);
  }
}

/// Some containers end without a word when their file was cut off.
void MovieStream::noteEnd() {
  const double slack = 2 / m_info.framesPerSecond();
  if (m_knowsLength && m_lastEnd && *m_lastEnd < m_info.duration - slack) m_damaged = true;
}

qint64 MovieStream::tickOf(const AVFrame& frame) {
  const qint64 stamp = frame.best_effort_timestamp;
  qint64 tick = m_nextTick;
  if (stamp == AV_NOPTS_VALUE) {
    m_hasStamps = false;
  } else {
    if (m_start == AV_NOPTS_VALUE) m_start = stamp;
    tick = av_sat_sub64(stamp, m_start);
  }
  tick = std::clamp<qint64>(tick, 0, lastTick);
  m_nextTick = tick + std::llround(1 / (m_info.framesPerSecond() * m_info.tick));
  m_lastEnd =
      static_cast<double>(std::max<qint64>(m_nextTick, av_sat_add64(tick, frame.pkt_duration))) *
      m_info.tick;
  return tick;
}

Result<void> MovieStream::jump(qint64 tick) {
  if (!m_hasStamps || !m_input || !m_decoder) return jumpToStart();
  const qint64 from = m_start == AV_NOPTS_VALUE ? 0 : m_start;
  const int code =
      av_seek_frame(m_input.get(), m_track, av_sat_add64(from, tick), AVSEEK_FLAG_BACKWARD);
  if (code < 0) return jumpToStart();
  avcodec_flush_buffers(m_decoder.get());
  m_drained = false;
  m_lastEnd.reset();
  return {};
}

/// By opening the file once more, which works for every file.
Result<void> MovieStream::jumpToStart() {
  m_input.reset();
  m_decoder.reset();
  m_drained = false;
  m_nextTick = 0;
  m_lastEnd.reset();
  if (auto done = openFile(); !done) return done;
  return openDecoder();
}

}  // namespace runtime::movie
