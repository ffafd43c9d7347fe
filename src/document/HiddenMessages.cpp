#include "document/HiddenMessages.h"

#include <algorithm>

namespace document {

namespace {

/// All messages that offer it.
const QStringList& keys() {
  static const QStringList keys{QStringLiteral("upgradeComponents"),
                                QStringLiteral("relativePaths"), QStringLiteral("embedResources")};
  return keys;
}

}  // namespace

int HiddenMessages::count() const {
  return static_cast<int>(std::count_if(keys().begin(), keys().end(), [this](const QString& key) {
    return m_defaults.value(key).toBool();
  }));
}

void HiddenMessages::showAllAgain() {
  for (const QString& key : keys()) m_defaults.remove(key);
}

}  // namespace document
