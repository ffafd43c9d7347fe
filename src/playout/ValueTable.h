#pragma once

#include <QJsonObject>

#include "playout/InputValues.h"

namespace playout {

/// Rows of values from a file of other people's: separated texts, as spreadsheets save them, with
/// the columns' names in the first line, or JSON with one object or a list of objects. Rows are
/// counted from 0 here and from 1 in messages, without the line of names.
class ValueTable {
 public:
  static constexpr qint64 largestFile = qint64{64} << 20;
  static constexpr qsizetype mostRows = 1'000'000;
  static constexpr qsizetype mostColumns = 10'000;

  /// By the ending .json, or as separated texts whatever the name is. Fails, naming the file and
  /// the place, for what cannot be read, is larger than the limits, or holds no table.
  [[nodiscard]] static foundation::Result<ValueTable> fromFile(const QString& path);
  /// The same for the contents of a file of that name.
  [[nodiscard]] static foundation::Result<ValueTable> fromBytes(const QByteArray& bytes,
                                                                const QString& path);

  [[nodiscard]] const QString& path() const { return m_path; }
  /// A column that has no name is called by its number, for example "Column 3".
  [[nodiscard]] const QStringList& columns() const { return m_columns; }
  [[nodiscard]] qsizetype rowCount() const;
  /// A text in separated texts, anything in JSON; undefined where the row does not reach so far.
  [[nodiscard]] QJsonValue cell(qsizetype row, qsizetype column) const;
  /// What a list shows of it.
  [[nodiscard]] QString cellText(qsizetype row, qsizetype column) const;
  /// What stands for the row in lists: its cell in a column called Name or Title, else its first
  /// text, else its first number, else "Row 7". One line.
  [[nodiscard]] QString title(qsizetype row) const;

  /// A column that fills no input.
  struct UnusedColumn {
    QString name;
    QStringList candidates;  ///< inputs that it could mean, when there are several
    QString filledBy;        ///< the column that fills what it means
    /// For its reader.
    [[nodiscard]] QString sentence() const;
  };
  /// Which column fills which input.
  struct Fit {
    std::vector<std::optional<runtime::PortAttributes>> inputs;  ///< by column
    std::vector<UnusedColumn> unused;
    [[nodiscard]] bool isNone() const;
  };
  /// By the input's key, else by its label when no other input has it; upper and lower case are the
  /// same unless that leaves two. Of two columns for one input the one with its key fills it, else
  /// the first.
  [[nodiscard]] Fit fit(const std::vector<runtime::PortAttributes>& inputs) const;

  struct WrongCell {
    qsizetype row = 0;
    qsizetype column = 0;
    ValueFailure failure;  ///< its message names row and column, its file is the table's
  };
  struct RowValues {
    std::vector<InputValue> values;  ///< what can be set
    QJsonObject json;                ///< the same as a values file has it, with whole picture paths
    std::vector<WrongCell> wrong;
  };
  /// The values of a row. Where it has no cell, null, or an empty one that is for neither a text
  /// nor a picture, the input gets no value. Decimal commas are understood where semicolons
  /// part the cells. Relative picture names start at the table's folder.
  [[nodiscard]] RowValues assign(qsizetype row, const Fit& fit) const;

 private:
  [[nodiscard]] foundation::Result<void> readText(const QByteArray& bytes);
  [[nodiscard]] foundation::Result<void> readJson(const QByteArray& bytes);
  [[nodiscard]] foundation::Result<void> checkSize() const;
  [[nodiscard]] QJsonValue value(const QJsonValue& cell, const runtime::PortAttributes& port) const;

  QString m_path;
  QStringList m_columns;
  QList<QStringList> m_lines;          ///< separated texts
  std::vector<QJsonObject> m_objects;  ///< JSON
  bool m_hasDecimalCommas = false;
};

}  // namespace playout
