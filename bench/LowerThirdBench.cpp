// Draws a lower third through the runtime and, beside it, the same pixels by a bare painter loop:
// frames a second with one and two frames at a time, memory and the time to the first frame; then
// how the time grows with sprites and with the size of the picture.

#include <sys/resource.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPainter>
#include <QSemaphore>
#include <QTextStream>
#include <QThreadPool>
#include <cmath>
#include <cstring>

#include "quartz/QuartzComposition.h"
#include "runtime/CompositionRenderer.h"
#include "runtime/draw/FrameCanvas.h"
#include "runtime/draw/RasterBackend.h"

namespace {

using foundation::PropertyDictionary;
using runtime::DrawList;

constexpr QSize fullHd(1920, 1080);

/// One sprite of the lower third at a time; pixels of a 1920 × 1080 picture, rows downwards.
struct SpriteAt {
  QPointF center;
  QSizeF size;
  double rotation = 0;  ///< degrees, counter-clockwise
  QColor color = Qt::white;
  int picture = -1;  ///< index into the pictures; −1 is plain colour
};

QImage bar() {
  QImage image(1920, 180, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  QLinearGradient ramp(0, 0, 0, 180);
  ramp.setColorAt(0, QColor(20, 40, 120, 230));
  ramp.setColorAt(1, QColor(10, 10, 60, 230));
  painter.fillRect(image.rect(), ramp);
  return image;
}

QImage disc() {
  QImage image(160, 160, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(QColor(240, 160, 20));
  painter.drawEllipse(4, 4, 152, 152);
  painter.fillRect(70, 10, 20, 140, Qt::white);
  return image;
}

/// Stands for a line of text: many small shapes.
QImage textLine(int width, int height) {
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::white);
  painter.setPen(Qt::NoPen);
  for (int x = 4; x + 20 < width; x += 26) painter.drawEllipse(x, 4, 18, height - 8);
  return image;
}

const std::vector<QImage>& pictures() {
  static const std::vector<QImage> images{bar(), disc(), textLine(900, 64), textLine(700, 44)};
  return images;
}

std::vector<SpriteAt> lowerThird(double time) {
  std::vector<SpriteAt> sprites{{{960, 900}, {1920, 180}, 0, Qt::white, 0},
                                {{200, 900}, {160, 160}, time * 90, Qt::white, 1}};
  for (int i = 0; i < 4; ++i)
    sprites.push_back({{400 + 300 * i + 80 * std::sin(time + i), 1020},
                       {220, 40},
                       0,
                       QColor(255, 60 * i, 40, 128)});
  const int fade = static_cast<int>(255 * (0.5 + 0.5 * std::sin(time * 2)));
  sprites.push_back({{800, 870}, {900, 64}, 0, QColor(255, 255, 255, fade), 2});
  sprites.push_back({{700, 940}, {700, 44}, 0, QColor(255, 255, 255, fade), 3});
  return sprites;
}

/// The composition: one Sprite a sprite, everything that moves is a published input.
class Player {
 public:
  Player(const std::vector<SpriteAt>& sprites, const QSize& size) : m_size(size) {
    foundation::PropertyArray nodes;
    foundation::PropertyArray inputs;
    for (size_t i = 0; i < sprites.size(); ++i) addSprite(nodes, inputs, static_cast<int>(i));
    const PropertyDictionary state{{QStringLiteral("nodes"), nodes},
                                   {QStringLiteral("publishedInputPorts"), inputs}};
    const PropertyDictionary root{{QStringLiteral("class"), QStringLiteral("QCPatch")},
                                  {QStringLiteral("state"), state}};
    const auto composition = quartz::QuartzComposition::compositionWithDictionary(
        PropertyDictionary{{QStringLiteral("rootPatch"), root}});
    auto compiled = runtime::CompiledComposition::compile(*composition, {}, {});
    if (!compiled) qFatal("%s", qPrintable(compiled.error().message));
    m_renderer = std::make_unique<runtime::CompositionRenderer>(*compiled);
    for (const QImage& image : pictures()) m_images.push_back(runtime::Image::fromQImage(image));
  }

  DrawList frame(const std::vector<SpriteAt>& sprites, double time) {
    for (size_t i = 0; i < sprites.size(); ++i) apply(sprites[i], static_cast<int>(i));
    return m_renderer->renderAtTime(time, m_size);
  }

 private:
  static QString key(const char* port, int i) {
    return QStringLiteral("%1%2").arg(QLatin1String(port)).arg(i);
  }
  static void addSprite(foundation::PropertyArray& nodes, foundation::PropertyArray& inputs,
                        int i) {
    const QString name = key("Sprite", i);
    nodes.append(PropertyDictionary{{QStringLiteral("class"), QStringLiteral("QCSprite")},
                                    {QStringLiteral("key"), name},
                                    {QStringLiteral("state"), PropertyDictionary{}}});
    for (const char* port :
         {"inputX", "inputY", "inputRZ", "inputWidth", "inputHeight", "inputColor", "inputImage"}) {
      // A sprite whose image is published but null would draw nothing.
      if (QLatin1String(port) == QLatin1String("inputImage") && i >= 2 && i < 6) continue;
      inputs.append(PropertyDictionary{{QStringLiteral("node"), name},
                                       {QStringLiteral("port"), QString::fromLatin1(port)},
                                       {QStringLiteral("key"), key(port, i)}});
    }
  }
  void apply(const SpriteAt& sprite, int i) {
    const double unit = 2.0 / m_size.width();
    const auto set = [&](const char* port, const runtime::Value& value) {
      m_renderer->setValueForInputKey(value, key(port, i));
    };
    set("inputX", (sprite.center.x() - m_size.width() / 2.0) * unit);
    set("inputY", (m_size.height() / 2.0 - sprite.center.y()) * unit);
    set("inputRZ", sprite.rotation);
    set("inputWidth", sprite.size.width() * unit);
    set("inputHeight", sprite.size.height() * unit);
    set("inputColor", foundation::Color::fromQColor(sprite.color));
    if (sprite.picture >= 0) set("inputImage", m_images[static_cast<size_t>(sprite.picture)]);
  }

  QSize m_size;
  std::unique_ptr<runtime::CompositionRenderer> m_renderer;
  std::vector<runtime::Image> m_images;
};

/// The same pixels without the runtime: erases the rows of the lower third, then paints.
void paintBare(const std::vector<SpriteAt>& sprites, QImage& target) {
  std::memset(target.scanLine(810), 0, static_cast<size_t>(target.bytesPerLine()) * 240);
  QPainter painter(&target);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  for (const SpriteAt& s : sprites) {
    const QRectF rect(s.center - QPointF(s.size.width(), s.size.height()) / 2, s.size);
    if (s.picture < 0) {
      painter.fillRect(rect, s.color);
      continue;
    }
    const QImage& image = pictures()[static_cast<size_t>(s.picture)];
    painter.setOpacity(s.color.alphaF());
    if (s.rotation == 0) {
      painter.drawImage(rect.topLeft(), image);
    } else {
      painter.translate(s.center);
      painter.rotate(-s.rotation);
      painter.drawImage(QPointF(-s.size.width(), -s.size.height()) / 2, image);
      painter.resetTransform();
    }
    painter.setOpacity(1);
  }
}

/// Frames a second of `make(number)` (in order, in this thread) and `draw` (in the pool, so many
/// at a time, each with a slot of its own).
template <class Make, class Draw>
double framesPerSecond(int frames, int atATime, Make make, Draw draw) {
  QThreadPool* pool = QThreadPool::globalInstance();
  pool->setMaxThreadCount(atATime);
  QSemaphore idle(atATime + 1);
  std::mutex mutex;
  std::vector<int> slots_;
  for (int i = 0; i <= atATime; ++i) slots_.push_back(i);
  QElapsedTimer timer;
  timer.start();
  for (int i = 0; i < frames; ++i) {
    auto frame = make(i);
    idle.acquire();
    pool->start([&, frame = std::move(frame)] {
      int slot = 0;
      {
        const std::lock_guard lock(mutex);
        slot = slots_.back();
        slots_.pop_back();
      }
      draw(frame, slot);
      const std::lock_guard lock(mutex);
      slots_.push_back(slot);
      idle.release();
    });
  }
  pool->waitForDone();
  return frames * 1e9 / static_cast<double>(timer.nsecsElapsed());
}

double throughRuntime(const QSize& size, int frames, int atATime,
                      const std::function<std::vector<SpriteAt>(double)>& scene) {
  Player player(scene(0), size);
  std::vector<runtime::FrameCanvas> canvases;
  for (int i = 0; i <= atATime; ++i) canvases.emplace_back(size, 0);
  return framesPerSecond(
      frames, atATime, [&](int i) { return player.frame(scene(i / 50.0), i / 50.0); },
      [&](const DrawList& list, int slot) { canvases[static_cast<size_t>(slot)].draw(list); });
}

double bare(int frames, int atATime) {
  std::vector<QImage> targets;
  for (int i = 0; i <= atATime; ++i) {
    targets.emplace_back(fullHd, QImage::Format_ARGB32_Premultiplied);
    targets.back().fill(Qt::transparent);
  }
  return framesPerSecond(
      frames, atATime, [](int i) { return lowerThird(i / 50.0); },
      [&](const std::vector<SpriteAt>& sprites, int slot) {
        paintBare(sprites, targets[static_cast<size_t>(slot)]);
      });
}

/// The largest difference of a channel between both ways, 0…255: they must draw the same.
int difference() {
  int largest = 0;
  Player player(lowerThird(0), fullHd);
  runtime::FrameCanvas canvas(fullHd);
  QImage target(fullHd, QImage::Format_ARGB32_Premultiplied);
  target.fill(Qt::transparent);
  // At time 0 the movement starts at whole pixels, where the bare loop is exact as well.
  for (const double time : {0.0, 90.0}) {
    std::vector<SpriteAt> scene = lowerThird(time);
    for (SpriteAt& sprite : scene) sprite.center = sprite.center.toPoint();
    const QImage& drawn = canvas.draw(player.frame(scene, time));
    paintBare(scene, target);
    for (int y = 0; y < target.height(); ++y)
      for (int x = 0; x < target.bytesPerLine(); ++x)
        largest =
            std::max(largest, std::abs(drawn.constScanLine(y)[x] - target.constScanLine(y)[x]));
  }
  return largest;
}

double copies(int frames) {
  QImage from(fullHd, QImage::Format_ARGB32_Premultiplied);
  QImage to(fullHd, QImage::Format_ARGB32_Premultiplied);
  from.fill(Qt::blue);
  to.fill(Qt::red);
  QElapsedTimer timer;
  timer.start();
  for (int i = 0; i < frames; ++i)
    std::memcpy(to.bits(), from.constBits(), static_cast<size_t>(from.sizeInBytes()));
  return frames * 1e9 / static_cast<double>(timer.nsecsElapsed());
}

std::vector<SpriteAt> crowd(int count, double time) {
  std::vector<SpriteAt> sprites = lowerThird(time);
  sprites.resize(static_cast<size_t>(std::min<int>(count, 6)));
  for (int i = 6; i < count; ++i)
    sprites.push_back({{60.0 + (i * 97) % 1800, 60.0 + (i * 61) % 700 + std::sin(time + i) * 20},
                       {160, 160},
                       0,
                       Qt::white,
                       1});
  return sprites;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QElapsedTimer start;
  start.start();
  QGuiApplication app(argc, argv);
  QTextStream out(stdout);
  const int frames = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 1000;
  Player first(lowerThird(0), fullHd);
  runtime::FrameCanvas canvas(fullHd);
  canvas.draw(first.frame(lowerThird(0), 0));
  out << "first frame after " << start.elapsed() << " ms\n";
  out << "largest difference from the bare loop: " << difference() << " / 255\n";
  for (const int atATime : {1, 2}) {
    const double bareRate = bare(frames, atATime);
    const double rate = throughRuntime(fullHd, frames, atATime, lowerThird);
    out << atATime << " at a time: runtime " << qRound(rate) << " fps, bare loop "
        << qRound(bareRate) << " fps, ratio " << QString::number(rate / bareRate, 'f', 2) << '\n';
    out.flush();
  }
  out << "copying a frame: " << qRound(copies(frames)) << " a second\n";
  for (const int count : {1, 10, 50, 100, 200})
    out << count << " sprites: "
        << qRound(throughRuntime(fullHd, frames / 4 + 1, 1,
                                 [count](double t) { return crowd(count, t); }))
        << " fps\n";
  for (const QSize& size : {QSize(640, 360), QSize(1280, 720), fullHd, QSize(3840, 2160)}) {
    const double scale = size.width() / 1920.0;
    const auto scene = [scale](double t) {
      std::vector<SpriteAt> sprites = lowerThird(t);
      for (SpriteAt& s : sprites) {
        s.center *= scale;
        s.size *= scale;
      }
      return sprites;
    };
    out << size.width() << " x " << size.height() << ": "
        << qRound(throughRuntime(size, frames / 4 + 1, 1, scene)) << " fps\n";
  }
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  out << "peak memory " << usage.ru_maxrss / 1024 << " MiB\n";
  return 0;
}
