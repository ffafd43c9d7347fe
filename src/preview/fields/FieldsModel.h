#pragma once

#include <QHash>
#include <QJsonObject>
#include <QObject>

#include "playout/InputValues.h"
#include "preview/fields/Field.h"

namespace preview {

/// The fields of a graphic, what is in them, and what of that the running file has. What is entered
/// is sent at once, or held until update().
class FieldsModel : public QObject {
  Q_OBJECT

 public:
  /// What fields hold, by key; also of keys that the graphic does not have at the moment.
  struct Entry {
    runtime::PortType type = runtime::PortType::Virtual;
    std::optional<FieldValue> value = {};
    std::optional<FieldValue> sent = {};
  };
  using Entries = QHash<QString, Entry>;

  using QObject::QObject;

  /// Inputs that are not for operators: those that the player feeds itself.
  [[nodiscard]] static bool isInternal(const QString& key);

  /// The inputs of what is played from now on. Fields of the same key and type keep their values
  /// where these are within the limits; nothing is sent.
  void setInputs(const std::vector<runtime::PortAttributes>& inputs);
  [[nodiscard]] const std::vector<Field>& fields() const { return m_fields; }
  [[nodiscard]] QStringList keys() const;
  /// None of that key.
  [[nodiscard]] const Field* field(const QString& key) const;
  /// What a file that is loaded now has to be given before its first frame.
  [[nodiscard]] std::vector<playout::InputValue> sentValues() const;

  /// For another graphic to come back to; see setInputs().
  [[nodiscard]] Entries entries() const;
  /// Call setInputs() afterwards.
  void setEntries(const Entries& entries);

  /// Fails, and changes nothing, with what is wrong, as a sentence. Relative names of files start
  /// at the folder.
  tl::expected<void, QString> enter(const QString& key, const QJsonValue& json,
                                    const QString& folder = {});
  tl::expected<void, QString> enterText(const QString& key, const QString& text,
                                        const QString& folder = {});
  /// The picture of the field lies there from now on; it is the same one, and nothing is sent.
  void setPicturePath(const QString& key, const QString& path);
  [[nodiscard]] QStringList pictureKeys() const;
  /// As it was; none: the file's default.
  void restore(const QString& key, const std::optional<FieldValue>& value);
  /// Back to the file's default, entered like a value.
  void reset(const QString& key) { restore(key, std::nullopt); }
  /// All defaults, sent in any case.
  void resetAll();
  /// Enters what fits; what does not, as sentences that name the key. Those of the fields of
  /// `named` that get no value then have the file's default; others stay as they are.
  QStringList fill(const QJsonObject& values, const QString& folder, const QStringList& named);
  /// What differs from the defaults, as values files hold it.
  [[nodiscard]] QJsonObject filledIn() const;

  [[nodiscard]] bool holdsChanges() const { return m_holds; }
  /// Ending it sends nothing by itself.
  void setHoldsChanges(bool holds);
  [[nodiscard]] int pendingCount() const;
  /// Sends what was held.
  void update();

 Q_SIGNALS:
  /// Other fields than before, or of another kind.
  void fieldsChanged();
  void valueChanged(const QString& key);
  /// Fields were filled in from elsewhere: what is being typed is out of date.
  void filled();
  /// To the running file.
  void sending(const QString& key, const runtime::Value& value);
  void holdsChangesChanged(bool holds);

 private:
  [[nodiscard]] Field* find(const QString& key);
  tl::expected<void, QString> take(Field* field,
                                   const tl::expected<runtime::Value, playout::ValueFailure>& value,
                                   const QString& path);
  void assign(Field& field, std::optional<FieldValue> value);
  void send(Field& field);

  std::vector<Field> m_fields;
  Entries m_dormant;  ///< of keys that are not there now
  bool m_holds = false;
};

}  // namespace preview
