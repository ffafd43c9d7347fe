#pragma once

#include <QJsonObject>
#include <QStringList>
#include <vector>

#include "foundation/Result.h"

namespace playout {

/// Values for published inputs under a name, in the form of a values file: key to JSON value.
struct ValueSet {
  QString name;
  QJsonObject values;
  friend bool operator==(const ValueSet&, const ValueSet&) = default;
};

/// The sets of values that belong to a graphic, in their order, and which of them its thumbnails
/// show. Names are told apart by every letter.
class ValueSets {
 public:
  static constexpr qsizetype longestName = 200;

  [[nodiscard]] const std::vector<ValueSet>& list() const { return m_sets; }
  [[nodiscard]] bool isEmpty() const { return m_sets.empty(); }
  [[nodiscard]] QStringList names() const;
  /// None when there is no set of the name. Lives until the sets change.
  [[nodiscard]] const ValueSet* named(const QString& name) const;
  /// The name, or the name with the first number from 2 that makes it a new one.
  [[nodiscard]] QString freeName(const QString& name) const;
  /// Fails with a sentence for what cannot be a name: nothing at all, blanks at an end, line ends
  /// and other control characters, "./" at the beginning (which means files), longer than
  /// longestName.
  [[nodiscard]] static foundation::Result<void> checkName(const QString& name);

  /// At the end. Fails for a name that is taken, or is none.
  [[nodiscard]] foundation::Result<void> add(const ValueSet& set);
  /// In the place of the set of its name; at the end when there is none.
  [[nodiscard]] foundation::Result<void> put(const ValueSet& set);
  /// False when there is no set of the name. Thumbnails show defaults when it was theirs.
  bool remove(const QString& name);
  /// In its place; thumbnails go on using it.
  [[nodiscard]] foundation::Result<void> rename(const QString& from, const QString& to);
  /// Of the set that thumbnails show; empty: the defaults.
  [[nodiscard]] const QString& thumbnailName() const { return m_thumbnailName; }
  [[nodiscard]] const ValueSet* thumbnailSet() const { return named(m_thumbnailName); }
  /// Fails when there is no set of the name; nothing stands for the defaults.
  [[nodiscard]] foundation::Result<void> setThumbnailName(const QString& name);

  /// Brings two changes of the same sets together: what one of both left as it was before is as the
  /// other made it. A set that both changed, each in its way, is there twice afterwards: as in
  /// `mine` under its name, as in `theirs` under a free one.
  [[nodiscard]] static ValueSets merged(const ValueSets& before, const ValueSets& mine,
                                        const ValueSets& theirs);

  /// The text of a file with all of it.
  [[nodiscard]] QByteArray toJson() const;
  /// Fails, naming the file, for what is damaged in any way; nothing is read in part.
  [[nodiscard]] static foundation::Result<ValueSets> fromJson(const QByteArray& bytes,
                                                              const QString& file);

  friend bool operator==(const ValueSets&, const ValueSets&) = default;

 private:
  [[nodiscard]] std::vector<ValueSet>::iterator find(const QString& name);

  std::vector<ValueSet> m_sets;
  QString m_thumbnailName;
};

}  // namespace playout
