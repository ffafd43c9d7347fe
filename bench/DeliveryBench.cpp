// What it costs to deliver 1920 × 1080 frames of a lower third: raw RGBA into a pipe, beside what
// the pipe alone carries, and a PNG sequence, beside the toolkit's own writer and libpng.
#include <png.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPainter>
#include <QTemporaryDir>
#include <QThread>
#include <cstdio>
#include <thread>

#include "render/PictureWriter.h"
#include "render/RawWriter.h"
#include "render/RenderPipeline.h"
#include "runtime/draw/RasterBackend.h"

namespace {

const QSize size(1920, 1080);
constexpr qint64 frameBytes = 1920LL * 1080 * 4;

runtime::Image gradientBar() {
  QImage image(1920, 152, QImage::Format_ARGB32_Premultiplied);
  QLinearGradient gradient(0, 0, 1920, 0);
  gradient.setColorAt(0, QColor(0x0a, 0x1b, 0x44));
  gradient.setColorAt(1, QColor(0x1a, 0x58, 0xc4));
  QPainter(&image).fillRect(image.rect(), gradient);
  return runtime::Image::fromQImage(image);
}

runtime::Image words(const QString& text, int pixels) {
  QImage image(900, pixels * 3 / 2, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  QFont font(QStringLiteral("Inter"));
  font.setPixelSize(pixels);
  painter.setFont(font);
  painter.setPen(Qt::white);
  painter.drawText(image.rect(), Qt::AlignLeft | Qt::AlignVCenter, text);
  return runtime::Image::fromQImage(image);
}

runtime::QuadItem quad(double x, double y, double w, double h, const runtime::Image& image,
                       const foundation::Color& color, double angle = 0) {
  const auto unit = [](double pixels) { return static_cast<float>(pixels / 960); };
  runtime::QuadItem item;
  item.matrix.translate(unit(x + w / 2 - 960), unit(y + h / 2 - 540));
  item.matrix.rotate(static_cast<float>(angle), 0, 0, 1);
  item.matrix.scale(unit(w), unit(h));
  item.image = image;
  item.color = color;
  return item;
}

runtime::DrawList frame(int i) {
  static const runtime::Image bar = gradientBar();
  static const runtime::Image headline = words(QStringLiteral("Harbour Master"), 66);
  static const runtime::Image second =
      words(QStringLiteral("Port authority, on site at the bridge"), 36);
  static const runtime::Image logo = words(QStringLiteral("✹"), 100);
  runtime::DrawList list;
  list.items.push_back(runtime::ClearItem{});
  list.items.push_back(quad(0, 80, 1920, 152, bar, foundation::Color::white()));
  for (int r = 0; r < 4; ++r)
    list.items.push_back(
        quad(200 + r * 300 + i % 100, 60 + r * 10, 260, 120, {}, {1, 0.7, 0.2, 0.4}));
  const double fade = (i % 50) / 50.0;
  list.items.push_back(quad(308, 140, 900, 99, headline, {1, 1, 1, fade}));
  list.items.push_back(quad(308, 95, 900, 54, second, {1, 1, 1, 1 - fade}));
  list.items.push_back(quad(120, 80, 152, 152, logo, foundation::Color::white(), i * 3));
  return list;
}

double rate(int frames, const std::function<void()>& work) {
  QElapsedTimer clock;
  clock.start();
  work();
  return frames / (static_cast<double>(clock.nsecsElapsed()) / 1e9);
}

/// Runs the work with the write end of a pipe whose other end is read as fast as possible.
double intoPipe(int frames, const std::function<void(int)>& work) {
  int ends[2];
  if (pipe(ends) != 0) return 0;
  std::thread reader([&] {
    std::vector<char> buffer(1 << 20);
    while (read(ends[0], buffer.data(), buffer.size()) > 0) {
    }
  });
  const double result = rate(frames, [&] { work(ends[1]); });
  close(ends[1]);
  reader.join();
  close(ends[0]);
  return result;
}

void throughPipeline(render::FrameWriter& writer, int frames, int threads) {
  render::RenderPipeline pipeline(writer, size, {.threads = threads});
  for (int i = 0; i < frames; ++i) pipeline.add({.list = frame(i), .number = i});
  if (!pipeline.finish()) std::puts("failed");
}

QImage picture(int i) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  runtime::RasterBackend().draw(frame(i), image);
  return image;
}

/// The usual fast setting of libpng: level 1, no row filter.
qsizetype encodeWithLibpng(const QImage& rgba) {
  QByteArray out;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(
      png, &out,
      [](png_structp p, png_bytep data, size_t length) {
        static_cast<QByteArray*>(png_get_io_ptr(p))
            ->append(reinterpret_cast<char*>(data), static_cast<qsizetype>(length));
      },
      [](png_structp) {});
  png_set_compression_level(png, 1);
  png_set_filter(png, 0, PNG_FILTER_NONE);
  png_set_IHDR(png, info, 1920, 1080, 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  for (int y = 0; y < 1080; ++y) png_write_row(png, rgba.constScanLine(y));
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return out.size();
}

long peakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  constexpr int many = 600;
  const QImage still = picture(20);
  const double pipeAlone = intoPipe(many, [&](int end) {
    render::RawWriter writer(render::Alpha::Premultiplied, end);
    for (int i = 0; i < many; ++i) (void)writer.deliver(still, {}, i);
  });
  std::printf("pipe alone                  %7.0f frames/s  (%.2f GB/s)\n", pipeAlone,
              pipeAlone * frameBytes / 1e9);
  for (const auto& [name, alpha] : {std::pair{"straight", render::Alpha::Straight},
                                    std::pair{"premultiplied", render::Alpha::Premultiplied}}) {
    const double raw = intoPipe(many, [&, a = alpha](int end) {
      render::RawWriter writer(a, end);
      throughPipeline(writer, many, 0);
    });
    std::printf("raw RGBA, %-13s     %7.0f frames/s  ratio %.2f\n", name, raw, raw / pipeAlone);
  }
  std::printf("peak memory after raw       %7ld MB\n", peakMegabytes());

  QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/delivery"));
  const auto sequence = [&](int frames, int threads) {
    return rate(frames, [&] {
      render::PictureWriter writer({folder.filePath(QStringLiteral("f_")), QStringLiteral(".png"),
                                    5, QLatin1Char('0'), true},
                                   render::PictureFormat::Png, render::Alpha::Straight);
      throughPipeline(writer, frames, threads);
    });
  };
  std::printf("PNG sequence, 1 thread      %7.0f frames/s\n", sequence(200, 1));
  std::printf("PNG sequence, all cores     %7.0f frames/s  (%d cores)\n", sequence(400, 0),
              QThread::idealThreadCount());
  QImage rgba = still;
  const QRect band(0, 1080 - 232, 1920, 232);
  render::convertToRgba(rgba, render::Alpha::Straight, band);
  render::PngEncoder encoder;
  qsizetype ours = 0;
  std::printf("encoding alone: ours        %7.0f frames/s", rate(100, [&] {
                for (int i = 0; i < 100; ++i)
                  ours = encoder.encode(rgba.constBits(), rgba.bytesPerLine(), size, band).size();
              }));
  std::printf("  %lld bytes\n", static_cast<long long>(ours));
  qsizetype theirs = 0;
  std::printf("encoding alone: libpng      %7.0f frames/s", rate(30, [&] {
                for (int i = 0; i < 30; ++i) theirs = encodeWithLibpng(rgba);
              }));
  std::printf("  %lld bytes (level 1, no filter)\n", static_cast<long long>(theirs));
  qsizetype toolkit = 0;
  std::printf("encoding alone: toolkit     %7.0f frames/s", rate(10, [&] {
                for (int i = 0; i < 10; ++i) {
                  QByteArray bytes;
                  QBuffer buffer(&bytes);
                  buffer.open(QIODevice::WriteOnly);
                  still.save(&buffer, "PNG");
                  toolkit = bytes.size();
                }
              }));
  std::printf("  %lld bytes\n", static_cast<long long>(toolkit));
  std::printf("peak memory                 %7ld MB\n", peakMegabytes());
  return 0;
}
