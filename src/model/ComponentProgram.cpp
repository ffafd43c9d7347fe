#include "model/ComponentProgram.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QHash>
#include <QMutex>
#include <deque>

#include "quartz/QuartzComposition.h"
#include "runtime/CompiledComposition.h"
#include "runtime/PatchRegistry.h"

namespace model {

using foundation::Result;
using Program = std::shared_ptr<const ComponentProgram>;

namespace {

const QString outputImage = QStringLiteral("outputImage");
const QString enable = QStringLiteral("_enable");

struct SpritePort {
  ComponentProgram::Sprite input;
  const char16_t* port;
};
constexpr std::array spritePorts{SpritePort{ComponentProgram::Sprite::X, u"inputX"},
                                 SpritePort{ComponentProgram::Sprite::Y, u"inputY"},
                                 SpritePort{ComponentProgram::Sprite::Width, u"inputWidth"},
                                 SpritePort{ComponentProgram::Sprite::Height, u"inputHeight"},
                                 SpritePort{ComponentProgram::Sprite::Rotation, u"inputRZ"},
                                 SpritePort{ComponentProgram::Sprite::Color, u"inputColor"},
                                 SpritePort{ComponentProgram::Sprite::Enable, u"_enable"}};

/// Programs in use, by their bytes and folder.
class ProgramCache {
 public:
  static ProgramCache& shared() {
    static ProgramCache cache;
    return cache;
  }
  static QByteArray keyOf(const QByteArray& bytes, const QString& path) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1) +
           QFileInfo(path).path().toUtf8();
  }
  Program find(const QByteArray& key) {
    const QMutexLocker lock(&m_mutex);
    return m_programs.value(key).lock();
  }
  void insert(const QByteArray& key, const Program& program) {
    const QMutexLocker lock(&m_mutex);
    m_programs.removeIf([](const auto& entry) { return entry.value().expired(); });
    m_programs.insert(key, program);
  }
  /// One that was lately found for these very bytes in memory: components that share their bytes,
  /// as those of an opened document do, need not be hashed one by one.
  Program findShared(const QByteArray& bytes, const QString& path) {
    const QMutexLocker lock(&m_mutex);
    for (const Recent& recent : m_recent)
      if (recent.bytes.constData() == bytes.constData() && recent.bytes.size() == bytes.size() &&
          recent.path == path)
        return recent.program.lock();
    return nullptr;
  }
  void share(const Program& program, const QByteArray& bytes, const QString& path) {
    constexpr size_t most = 16;
    const QMutexLocker lock(&m_mutex);
    std::erase_if(m_recent, [](const Recent& recent) { return recent.program.expired(); });
    if (m_recent.size() >= most) m_recent.pop_back();
    m_recent.push_front({bytes, path, program});
  }

 private:
  struct Recent {
    QByteArray bytes;  // kept, so that nothing else comes to lie there
    QString path;
    std::weak_ptr<const ComponentProgram> program;
  };
  QMutex m_mutex;
  QHash<QByteArray, std::weak_ptr<const ComponentProgram>> m_programs;
  std::deque<Recent> m_recent;
};

bool publishesImage(const quartz::QuartzPatch& node) {
  for (const auto& entry : node.state().value(u"publishedOutputPorts").array())
    if (entry.dictionary().value(u"key").toString() == outputImage) return true;
  const runtime::PatchClass* known =
      runtime::PatchRegistry::shared().find(node.patchClass(), node.identifier());
  if (!known) return false;
  for (const runtime::Port& port : known->ports.outputs)
    if (port.key == outputImage) return true;
  return false;
}

/// The node and port whose value the sprite draws.
struct ImageSource {
  const quartz::QuartzPatch* node = nullptr;
  QString port;
};

/// What the file publishes as its image; else the first node that yields one.
ImageSource imageSourceOf(const quartz::QuartzPatch& root) {
  for (const auto& output : root.state().value(u"publishedOutputPorts").array()) {
    const auto& entry = output.dictionary();
    if (entry.value(u"key").toString() != outputImage) continue;
    for (const auto& node : root.nodes())
      if (node->key() == entry.value(u"node").toString())
        return {node.get(), entry.value(u"port").toString()};
  }
  for (const auto& node : root.nodes())
    if (publishesImage(*node)) return {node.get(), outputImage};
  return {};
}

void silenceClearPatches(quartz::QuartzPatch& root) {
  for (const auto& node : root.nodes())
    if (node->patchClass() == QLatin1String("QCClear"))
      node->editState()
          .edit(QStringLiteral("systemInputPortStates"))
          .editDictionary()
          .insert(enable, foundation::PropertyDictionary{{QStringLiteral("value"), false}});
}

void removeEarlierSprite(quartz::QuartzPatch& root) {
  for (const auto& node : root.nodes()) {
    if (node->key() != QLatin1String("Sprite_1")) continue;
    (void)root.takeNode(node.get());
    return;
  }
}

void addSprite(quartz::QuartzPatch& root, const ImageSource& source) {
  quartz::QuartzPatch* sprite = root.addPatchWithClass(QStringLiteral("QCSprite"), {},
                                                       {{QStringLiteral("inputBlending"), 1}});
  root.addConnectionFromComponent(source.node->key(), source.port, sprite->key(),
                                  QStringLiteral("inputImage"));
  for (const SpritePort& port : spritePorts)
    sprite->publishPort(QString::fromUtf16(port.port), ComponentProgram::spriteKey(port.input));
}

}  // namespace

QString ComponentProgram::spriteKey(Sprite input) {
  return QStringLiteral("_component sprite/%1").arg(static_cast<int>(input));
}

Result<Program> ComponentProgram::fromData(const QByteArray& bytes, const QString& path) {
  if (Program shared = ProgramCache::shared().findShared(bytes, path)) return shared;
  const QByteArray cacheKey = ProgramCache::keyOf(bytes, path);
  if (Program cached = ProgramCache::shared().find(cacheKey)) {
    ProgramCache::shared().share(cached, bytes, path);
    return cached;
  }
  auto file = quartz::QuartzComposition::compositionWithData(bytes, path);
  if (!file) return tl::unexpected(file.error());
  auto program = std::make_shared<ComponentProgram>();
  program->m_name = (*file)->data().value(u"name").toString();
  quartz::QuartzPatch& root = *(*file)->rootPatch();
  program->m_rootNodeCount = static_cast<int>(root.nodes().size());
  removeEarlierSprite(root);
  silenceClearPatches(root);
  if (const ImageSource source = imageSourceOf(root); source.node) {
    program->m_hasImageOutput = true;
    program->m_rootIsRenderInImage = source.node->patchClass() == QLatin1String("QCRenderInImage");
    addSprite(root, source);
  }
  auto compiled = runtime::CompiledComposition::compile(**file, path);
  if (!compiled) return tl::unexpected(compiled.error());
  program->m_compiled = std::move(*compiled);
  for (const runtime::PublishedPort& input : program->m_compiled->inputs())
    if (!input.key.startsWith(QLatin1String("_component sprite/"))) {
      program->m_inputKeys.append(input.key);
      program->m_inputLabels.append(input.label);
    }
  ProgramCache::shared().insert(cacheKey, program);
  ProgramCache::shared().share(program, bytes, path);
  return program;
}

}  // namespace model
