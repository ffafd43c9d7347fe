#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QTemporaryDir>

#include "app/AppDelegate.h"
#include "app/TYWindowController.h"
#include "model/Composition.h"

namespace app {

/// The editor with settings and recovery data of its own.
class RunningEditor : public testing::Test {
 protected:
  ~RunningEditor() override { QApplication::clipboard()->clear(); }

  /// Anew, with these files; without any, with an empty document.
  void start(const QStringList& paths = {}) {
    delegate.reset();
    delegate = std::make_unique<AppDelegate>(defaults, document::RecoveryStore(path("state")));
    delegate->start(paths);
    settle();
  }
  static void settle() {
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
  }
  /// Of the last document.
  [[nodiscard]] TYWindowController& window() const {
    return *delegate->windowOf(*delegate->controller().documents().last());
  }
  [[nodiscard]] model::Composition& composition() const { return *window().composition(); }
  [[nodiscard]] QString path(const char* name) const {
    return folder.filePath(QString::fromUtf8(name));
  }
  void trigger(const char* identifier) {
    settle();
    QAction* action = window().actions().action(QString::fromLatin1(identifier));
    ASSERT_TRUE(action) << identifier;
    ASSERT_TRUE(action->isEnabled()) << identifier;
    action->trigger();
    settle();
  }

  QTemporaryDir folder;
  foundation::UserDefaults defaults{path("defaults.conf")};
  std::unique_ptr<AppDelegate> delegate;
};

}  // namespace app
