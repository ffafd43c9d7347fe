#pragma once

#include <QTemporaryDir>

#include "model/Composition.h"
#include "model/StandardComponents.h"
#include "quartz/QuartzComposition.h"
#include "store/ObjectContext.h"

namespace model {

/// Small component files and standard components in a folder of their own.
class ComponentFiles {
 public:
  ComponentFiles();
  [[nodiscard]] QString path(const QString& name) const { return m_dir.filePath(name); }
  [[nodiscard]] StandardComponents standardComponents() const {
    return StandardComponents(m_dir.path());
  }

  /// A root with one macro "Content" that publishes these typed inputs and "outputImage".
  struct Input {
    QString key;
    QString portClass;
    foundation::PropertyValue value;
    QString label;
  };
  QString writeComponent(const QString& name, const QList<Input>& inputs, bool timebased = false);
  /// A composition that draws and yields no image.
  QString writeConsumer(const QString& name);

 private:
  void writeRenderer();
  QTemporaryDir m_dir;
};

/// A graphic with the context that it lives in.
struct Graphic {
  std::unique_ptr<store::ObjectContext> context = std::make_unique<store::ObjectContext>();
  Composition* composition = nullptr;
  Composition* operator->() const { return composition; }
  Composition& operator*() const { return *composition; }
};

/// A 1920 by 1080 graphic of two seconds.
[[nodiscard]] Graphic emptyGraphic();

}  // namespace model
