#include "inspector/FontPanel.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QListWidget>
#include <QScreen>
#include <QShortcut>
#include <QSortFilterProxyModel>
#include <QStringListModel>
#include <QStyledItemDelegate>

#include "runtime/text/FontResolver.h"
#include "widgets/TYNumberField.h"
#include "widgets/TYScrubLabel.h"
#include "widgets/TYSearchField.h"
#include "widgets/TYStyleKit.h"

namespace inspector {

using model::FontValue;
using runtime::FontResolver;

namespace {

constexpr QSize panelSize(440, 420);
constexpr int margin = 12;
constexpr int gap = 8;
constexpr int rowHeight = 28;
constexpr int familySize = 15;   // pixels
constexpr int previewSize = 24;  // pixels
constexpr double largest = 2000;

/// Shows each family in its own face, where that can show its own name.
class FamilyDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
    return {80, rowHeight};
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const QString family = index.data().toString();
    const auto systems = QFontDatabase::writingSystems(family);
    if (!systems.contains(QFontDatabase::Latin)) return;
    option->font = QFont(family);
    option->font.setPixelSize(familySize);
  }
};

}  // namespace

FontPanel& FontPanel::of(QWidget& widget) {
  auto* existing = widget.window()->findChild<FontPanel*>(QString(), Qt::FindDirectChildrenOnly);
  return existing ? *existing : *new FontPanel(widget.window());
}

FontPanel::FontPanel(QWidget* parent) : QWidget(parent, Qt::Tool) {
  connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this,
          &QWidget::close);
  setWindowTitle(tr("Fonts"));
  resize(panelSize);
  m_search = new widgets::TYSearchField;
  m_model = new QStringListModel(this);
  m_found = new QSortFilterProxyModel(this);
  m_found->setSourceModel(m_model);
  m_found->setFilterCaseSensitivity(Qt::CaseInsensitive);
  m_families = new QListView;
  m_families->setModel(m_found);
  m_families->setItemDelegate(new FamilyDelegate(m_families));
  m_families->setUniformItemSizes(true);
  m_families->setEditTriggers(QAbstractItemView::NoEditTriggers);
  m_families->setAccessibleName(tr("Families"));
  m_faces = new QListWidget;
  m_faces->setAccessibleName(tr("Faces"));
  m_size = new widgets::TYNumberField;
  m_size->setAccessibleName(tr("Size"));
  m_size->setUnit(QStringLiteral("pt"));
  m_size->setRange(1, largest);
  m_preview = new QLabel;
  m_preview->setFixedHeight(previewSize * 2);
  m_preview->setAlignment(Qt::AlignCenter);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(margin, margin, margin, margin);
  column->setSpacing(gap);
  column->addWidget(m_search);
  auto* lists = new QHBoxLayout;
  lists->setSpacing(gap);
  lists->addWidget(m_families, 3);
  lists->addWidget(m_faces, 2);
  column->addLayout(lists, 1);
  auto* foot = new QHBoxLayout;
  foot->setSpacing(gap);
  foot->addWidget(new widgets::TYScrubLabel(tr("Size"), m_size));
  m_size->setFixedWidth(80);
  foot->addWidget(m_size);
  foot->addWidget(m_preview, 1);
  column->addLayout(foot);

  connect(m_search, &QLineEdit::textChanged, m_found, &QSortFilterProxyModel::setFilterFixedString);
  connect(m_families->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex& current) {
            if (!current.isValid() || m_quiet) return;
            showFaces(current.data().toString(), style());
            announce();
          });
  connect(m_faces, &QListWidget::currentRowChanged, this, [this] { announce(); });
  connect(m_size, &widgets::TYValueField::editCommitted, this, [this] { announce(); });
}

QString FontPanel::nameOfFace(const QString& family, const QString& style) {
  const QString plain = QString(family).remove(u' ') + u'-' + QString(style).remove(u' ');
  for (const QString& name : {plain, QString(family + u' ' + style), family}) {
    const runtime::FontMatch match = FontResolver::resolve(name);
    if (!match.isStandIn && match.family.compare(family, Qt::CaseInsensitive) == 0) return name;
  }
  return family;
}

void FontPanel::open(QWidget& target, const FontValue& font,
                     std::function<void(const FontValue&)> changeFont) {
  m_target = &target;
  m_changeFont = std::move(changeFont);
  if (m_model->rowCount() == 0) m_model->setStringList(families());
  m_search->clear();
  select(font);
  if (!isVisible()) placeBeside(target);
  show();
  raise();
  activateWindow();
  m_families->setFocus();
}

QStringList FontPanel::families() {
  const QStringList all = QFontDatabase::families();
  QStringList families;
  for (const QString& name : all) {
    if (QFontDatabase::isPrivateFamily(name)) continue;
    // Faces are listed as families too ("Inter Black"); they are found among the family's faces.
    const bool isLonger = std::any_of(all.begin(), all.end(), [&](const QString& shorter) {
      return name.startsWith(shorter + u' ');
    });
    if (!isLonger || FontResolver::resolve(name).family == name) families.append(name);
  }
  return families;
}

void FontPanel::placeBeside(const QWidget& widget) {
  const QRect room = widget.screen()->availableGeometry();
  const QPoint at = widget.mapToGlobal(QPoint(-width() - gap * 3, -height() / 2));
  move(std::clamp(at.x(), room.left(), std::max(room.left(), room.right() - width())),
       std::clamp(at.y(), room.top(), std::max(room.top(), room.bottom() - height())));
}

void FontPanel::select(const FontValue& font) {
  m_quiet = true;
  m_font = font;
  const runtime::FontMatch match = FontResolver::resolve(font.name);
  for (int row = 0; row < m_found->rowCount(); ++row) {
    const QModelIndex index = m_found->index(row, 0);
    if (index.data().toString().compare(match.family, Qt::CaseInsensitive) != 0) continue;
    m_families->setCurrentIndex(index);
    m_families->scrollTo(index, QAbstractItemView::PositionAtCenter);
  }
  QString style = match.style;
  if (style.isEmpty()) {
    QFont like(match.family);
    like.setWeight(static_cast<QFont::Weight>(match.weight));
    like.setItalic(match.italic);
    style = QFontDatabase::styleString(like);
  }
  showFaces(match.family, style);
  m_size->setValue(font.size);
  m_quiet = false;
  showPreview();
}

void FontPanel::showFaces(const QString& family, const QString& style) {
  const bool wasQuiet = std::exchange(m_quiet, true);
  m_faces->clear();
  const QStringList styles = QFontDatabase::styles(family);
  m_faces->addItems(styles);
  qsizetype row = styles.indexOf(style);
  if (row < 0) row = std::max<qsizetype>(0, styles.indexOf(QStringLiteral("Regular")));
  m_faces->setCurrentRow(static_cast<int>(row));
  m_quiet = wasQuiet;
}

QString FontPanel::family() const {
  return m_families->currentIndex().data().toString();
}

QString FontPanel::style() const {
  return m_faces->currentItem() ? m_faces->currentItem()->text() : QString();
}

FontValue FontPanel::font() const {
  return m_font;
}

void FontPanel::announce() {
  if (m_quiet || family().isEmpty()) return;
  m_font = {nameOfFace(family(), style()), m_size->value()};
  showPreview();
  if (m_target && m_changeFont) m_changeFont(m_font);
}

void FontPanel::showPreview() {
  m_preview->setFont(FontResolver::font(m_font.name, previewSize));
  m_preview->setText(tr("Aa Bb 123"));
}

}  // namespace inspector
