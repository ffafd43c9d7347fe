#include "playout/ValueTable.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>

#include "foundation/SeparatedText.h"
#include "foundation/TextDecoding.h"

namespace playout {

using foundation::failure;
using foundation::Result;

namespace {

bool isBlank(const QStringList& line) {
  return std::all_of(line.begin(), line.end(),
                     [](const QString& cell) { return cell.trimmed().isEmpty(); });
}

/// Some spreadsheets tell others their separator in a line of its own.
std::optional<QChar> toldSeparator(QString& text) {
  static const QRegularExpression line(QStringLiteral("^\"?sep=(.)\"?(\r\n|\r|\n)"),
                                       QRegularExpression::CaseInsensitiveOption);
  const auto match = line.match(text, 0, QRegularExpression::NormalMatch,
                                QRegularExpression::AnchorAtOffsetMatchOption);
  if (!match.hasMatch()) return {};
  text.remove(0, match.capturedLength());
  return match.captured(1).front();
}

/// "1.234,5" and "-0,5" with a point instead of the comma; other texts as they are.
QString withDecimalPoint(const QString& text) {
  static const QRegularExpression number(
      QStringLiteral("^[+-]?(\\d*|\\d{1,3}(\\.\\d{3})+),\\d+([eE][+-]?\\d+)?$"));
  if (!number.match(text).hasMatch()) return text;
  return QString(text).remove(u'.').replace(u',', u'.');
}

QString jsonText(const QJsonValue& value) {
  if (value.isString()) return value.toString();
  if (value.isUndefined() || value.isNull()) return {};
  return QString::fromUtf8(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact))
      .chopped(1)
      .mid(1);
}

bool isNumber(const QString& text) {
  bool is = false;
  static_cast<void>(QString(text).replace(u',', u'.').toDouble(&is));
  return is;
}

}  // namespace

Result<ValueTable> ValueTable::fromFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return failure(QStringLiteral("cannot be read"), path, file.errorString());
  const QByteArray bytes = file.read(largestFile + 1);  // of a pipe the size is not known before
  if (file.error() != QFileDevice::NoError)
    return failure(QStringLiteral("cannot be read"), path, file.errorString());
  return fromBytes(bytes, path);
}

Result<ValueTable> ValueTable::fromBytes(const QByteArray& bytes, const QString& path) {
  if (bytes.size() > largestFile)
    return failure(
        QStringLiteral("is too large for a table of values: at most %1 MB").arg(largestFile >> 20),
        path);
  ValueTable table;
  table.m_path = path;
  const bool isJson =
      QFileInfo(path).suffix().compare(QLatin1String("json"), Qt::CaseInsensitive) == 0;
  return (isJson ? table.readJson(bytes) : table.readText(bytes))
      .and_then([&] { return table.checkSize(); })
      .map([&] { return std::move(table); });
}

Result<void> ValueTable::readText(const QByteArray& bytes) {
  QString text = foundation::decodedText(bytes);
  if (text.contains(QChar::Null)) return failure(QStringLiteral("is not a text"), m_path);
  const auto told = toldSeparator(text);
  const bool hasTabs =
      QFileInfo(m_path).suffix().compare(QLatin1String("tsv"), Qt::CaseInsensitive) == 0;
  const QChar separator =
      told.value_or(hasTabs ? QChar(u'\t') : foundation::SeparatedText::separatorOf(text));
  m_hasDecimalCommas = separator == u';';
  foundation::SeparatedText::Table read = foundation::SeparatedText::read(text, separator);
  if (read.unclosedLine > 0)
    return failure(QStringLiteral("a quotation mark is not closed"), m_path,
                   QStringLiteral("line %1").arg(read.unclosedLine + (told ? 1 : 0)));
  m_lines = std::move(read.lines);
  m_lines.removeIf(isBlank);
  if (m_lines.isEmpty()) return failure(QStringLiteral("holds no table"), m_path);
  m_columns = m_lines.takeFirst();
  qsizetype width = m_columns.size();
  for (const QStringList& line : std::as_const(m_lines)) width = std::max(width, line.size());
  if (width > mostColumns) return checkSize();
  m_columns.resize(width);
  for (qsizetype i = 0; i < width; ++i) {
    m_columns[i] = m_columns[i].simplified();
    if (m_columns[i].isEmpty()) m_columns[i] = QStringLiteral("Column %1").arg(i + 1);
  }
  return {};
}

Result<void> ValueTable::readJson(const QByteArray& bytes) {
  QJsonParseError parse;
  const QJsonDocument document =
      QJsonDocument::fromJson(foundation::decodedText(bytes).toUtf8(), &parse);
  if (parse.error != QJsonParseError::NoError)
    return failure(parse.errorString(), m_path, QStringLiteral("byte %1").arg(parse.offset));
  const QJsonArray rows = document.isArray() ? document.array() : QJsonArray{document.object()};
  QSet<QString> known;
  for (const QJsonValue& row : rows) {
    if (!row.isObject())
      return failure(QStringLiteral("is neither an object of values nor a list of such objects"),
                     m_path, QStringLiteral("row %1").arg(m_objects.size() + 1));
    m_objects.push_back(row.toObject());
    for (const QString& name : m_objects.back().keys()) {
      if (known.contains(name)) continue;
      known.insert(name);
      m_columns.append(name);
    }
    if (m_columns.size() > mostColumns) break;
  }
  return {};
}

Result<void> ValueTable::checkSize() const {
  if (m_columns.size() > mostColumns || rowCount() > mostRows)
    return failure(QStringLiteral("is too large for a table of values: at most %1 rows and %2 "
                                  "columns")
                       .arg(mostRows)
                       .arg(mostColumns),
                   m_path);
  if (rowCount() == 0) return failure(QStringLiteral("holds no row of values"), m_path);
  return {};
}

qsizetype ValueTable::rowCount() const {
  return m_lines.isEmpty() ? static_cast<qsizetype>(m_objects.size()) : m_lines.size();
}

QJsonValue ValueTable::cell(qsizetype row, qsizetype column) const {
  if (row < 0 || row >= rowCount() || column < 0 || column >= m_columns.size())
    return QJsonValue::Undefined;
  if (m_lines.isEmpty()) return m_objects[static_cast<std::size_t>(row)].value(m_columns[column]);
  const QStringList& line = m_lines[row];
  return column < line.size() ? QJsonValue(line[column]) : QJsonValue(QJsonValue::Undefined);
}

QString ValueTable::cellText(qsizetype row, qsizetype column) const {
  return jsonText(cell(row, column));
}

QString ValueTable::title(qsizetype row) const {
  QString firstNumber;
  QString firstText;
  for (qsizetype i = 0; i < m_columns.size(); ++i) {
    const QJsonValue value = cell(row, i);
    if (value.isArray() || value.isObject()) continue;
    const QString text = jsonText(value).simplified();
    if (text.isEmpty()) continue;
    for (const char* name : {"name", "title"})
      if (m_columns[i].compare(QLatin1String(name), Qt::CaseInsensitive) == 0) return text;
    QString& first = isNumber(text) ? firstNumber : firstText;
    if (first.isEmpty()) first = text;
  }
  if (!firstText.isEmpty()) return firstText;
  return firstNumber.isEmpty() ? QStringLiteral("Row %1").arg(row + 1) : firstNumber;
}

QJsonValue ValueTable::value(const QJsonValue& cell, const runtime::PortAttributes& port) const {
  if (!cell.isString() || port.type == runtime::PortType::String) return cell;
  if (port.type == runtime::PortType::Image)
    return cell.toString().isEmpty()
               ? cell
               : QJsonValue(QDir::cleanPath(
                     QDir(QFileInfo(m_path).absolutePath()).filePath(cell.toString())));
  const QString text = cell.toString().trimmed();
  if (text.isEmpty()) return QJsonValue::Undefined;
  const bool isNumeric =
      port.type == runtime::PortType::Number || port.type == runtime::PortType::Index;
  const bool isTitle = port.menu.contains(text);
  return InputValues::jsonFromText(
      isNumeric && m_hasDecimalCommas && !isTitle ? withDecimalPoint(text) : text, port);
}

ValueTable::RowValues ValueTable::assign(qsizetype row, const Fit& fit) const {
  RowValues result;
  const auto columns = std::min(static_cast<qsizetype>(fit.inputs.size()), m_columns.size());
  for (qsizetype i = 0; i < columns; ++i) {
    const auto& port = fit.inputs[static_cast<std::size_t>(i)];
    if (!port) continue;
    const QJsonValue json = value(cell(row, i), *port);
    if (json.isUndefined() || json.isNull()) continue;
    auto read = InputValues::fromJson(json, *port, QFileInfo(m_path).absolutePath());
    if (read) {
      result.values.push_back({port->key, *read});
      result.json.insert(port->key, json);
      continue;
    }
    ValueFailure wrong = std::move(read.error());
    wrong.error.message = QStringLiteral("row %1, column '%2': %3")
                              .arg(row + 1)
                              .arg(m_columns[i], wrong.error.text());
    wrong.error.file = m_path;
    wrong.error.detail.clear();
    result.wrong.push_back({row, i, wrong});
  }
  return result;
}

}  // namespace playout
