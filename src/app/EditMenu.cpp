#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QTextEdit>

#include "app/MenuMaker.h"
#include "app/ProgramServices.h"
#include "document/DocumentClipboard.h"
#include "document/DocumentCommands.h"

namespace app {

using document::DocumentClipboard;
using document::DocumentCommands;

namespace {

/// Copies lie a little to the right and below, so that they are seen.
constexpr QPointF duplicateOffset(20, -20);

void callField(const char* slot) {
  QMetaObject::invokeMethod(QApplication::focusWidget(), slot);
}

}  // namespace

bool MenuMaker::editsText() {
  QWidget* focus = QApplication::focusWidget();
  return qobject_cast<QLineEdit*>(focus) || qobject_cast<QTextEdit*>(focus);
}

void MenuMaker::addEdit() {
  begin(tr("&Edit"));
  TYWindowController& window = m_window;
  add({.identifier = QStringLiteral("undo"),
       .text = tr("&Undo"),
       .shortcuts = {QKeySequence::Undo},
       .run = [&window] { editsText() ? callField("undo") : window.document().context().undo(); },
       .canRun = [&window] { return editsText() || window.document().context().canUndo(); }});
  add({.identifier = QStringLiteral("redo"),
       .text = tr("&Redo"),
       .shortcuts = {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z),
                     QKeySequence(Qt::CTRL | Qt::Key_Y)},
       .run = [&window] { editsText() ? callField("redo") : window.document().context().redo(); },
       .canRun = [&window] { return editsText() || window.document().context().canRedo(); }});
  separate();
  addClipboard();
  addSelected();
  separate();
  add({.identifier = QStringLiteral("selectAll"),
       .text = tr("Select &All"),
       .shortcuts = {QKeySequence::SelectAll},
       .run =
           [&window] {
             editsText() ? callField("selectAll") : window.composition()->selectAllComponents();
           },
       .canRun = [has = hasComposition()] { return editsText() || has(); }});
  separate();
  add({.identifier = QStringLiteral("preferences"),
       .text = tr("Pre&ferences…"),
       .shortcuts = {QKeySequence(Qt::CTRL | Qt::Key_Comma)},
       .run = [&window] { window.services().showPreferences(); }});
}

void MenuMaker::addClipboard() {
  TYWindowController& window = m_window;
  const auto canCopy = [&window] {
    return editsText() || DocumentClipboard(window.document()).canCopy();
  };
  const auto put = [](std::unique_ptr<QMimeData> data) {
    if (data) QApplication::clipboard()->setMimeData(data.release());
  };
  add({.identifier = QStringLiteral("cut"),
       .text = tr("Cu&t"),
       .shortcuts = {QKeySequence::Cut},
       .run =
           [&window, put] {
             editsText() ? callField("cut") : put(DocumentClipboard(window.document()).cut());
           },
       .canRun = canCopy,
       .needs = selectFirst()});
  add({.identifier = QStringLiteral("copy"),
       .text = tr("&Copy"),
       .shortcuts = {QKeySequence::Copy},
       .run =
           [&window, put] {
             editsText() ? callField("copy") : put(DocumentClipboard(window.document()).copy());
           },
       .canRun = canCopy,
       .needs = selectFirst()});
  add({.identifier = QStringLiteral("paste"),
       .text = tr("&Paste"),
       .shortcuts = {QKeySequence::Paste},
       .run =
           [&window] {
             if (editsText()) return callField("paste");
             QStringList warnings;
             const auto pasted = DocumentClipboard(window.document())
                                     .paste(*QApplication::clipboard()->mimeData(), warnings);
             if (!pasted) window.showError(tr("Nothing was pasted"), pasted.error());
             if (!warnings.isEmpty())
               window.showWarnings(tr("Not everything was pasted"), warnings);
           },
       .canRun =
           [&window] {
             const QMimeData* data = QApplication::clipboard()->mimeData();
             return editsText() ||
                    (window.composition() && data && DocumentClipboard::pasteboardIsValid(*data));
           },
       .needs = tr("The clipboard holds no component, image or text.")});
}

void MenuMaker::addSelected() {
  TYWindowController& window = m_window;
  add({.identifier = QStringLiteral("duplicate"),
       .text = tr("&Duplicate"),
       .shortcuts = {QKeySequence(Qt::CTRL | Qt::Key_D)},
       .run =
           [&window] {
             QStringList warnings;
             const auto done =
                 DocumentCommands(window.document()).duplicateSelection(duplicateOffset, warnings);
             if (!done) window.showError(tr("Nothing was duplicated"), done.error());
             if (!warnings.isEmpty())
               window.showWarnings(tr("Not everything was duplicated"), warnings);
           },
       .canRun = hasSelection(),
       .needs = selectFirst()});
  add({.identifier = QStringLiteral("delete"),
       .text = tr("De&lete"),
       .shortcuts = {QKeySequence::Delete, QKeySequence(Qt::Key_Backspace)},
       .run = [&window] { DocumentCommands(window.document()).deleteSelection(); },
       .canRun = [selected = hasSelection()] { return !editsText() && selected(); },
       .needs = selectFirst()});
}

}  // namespace app
