#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTextEdit>

#include "app/BackgroundMenu.h"
#include "app/MenuMaker.h"
#include "app/ProgramServices.h"
#include "document/DocumentClipboard.h"
#include "document/DocumentCommands.h"
#include "document/KeyFrameClipboard.h"
#include "timeline/TimelinePanel.h"

namespace app {

using document::DocumentClipboard;
using document::DocumentCommands;
using document::KeyFrameClipboard;

namespace {

/// Copies lie a little to the right and below, so that they are seen.
constexpr QPointF duplicateOffset(20, -20);

void callField(const char* slot) {
  QMetaObject::invokeMethod(QApplication::focusWidget(), slot);
}

foundation::Result<void> paste(TYWindowController& window, const QMimeData& data,
                               QStringList& warnings) {
  if (KeyFrameClipboard::holdsKeyFrames(data))
    return KeyFrameClipboard(window.document()).paste(data, window.timelinePanel().pasteTarget());
  return DocumentClipboard(window.document()).paste(data, warnings);
}

void pasteInto(TYWindowController& window) {
  const QMimeData* data = QApplication::clipboard()->mimeData();
  if (!data) return;
  QStringList warnings;
  const auto pasted = paste(window, *data, warnings);
  if (!pasted) window.showError(TYWindowController::tr("Nothing was pasted"), pasted.error());
  if (!warnings.isEmpty())
    window.showWarnings(TYWindowController::tr("Not everything was pasted"), warnings);
}

}  // namespace

bool MenuMaker::editsText() {
  QWidget* focus = QApplication::focusWidget();
  return qobject_cast<QLineEdit*>(focus) || qobject_cast<QTextEdit*>(focus) ||
         qobject_cast<QPlainTextEdit*>(focus);
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
             if (editsText())
               callField("selectAll");
             else if (window.editsKeyFrames())
               window.timelinePanel().selectAllKeyFrames();
             else
               window.composition()->selectAllComponents();
           },
       .canRun = [has = hasComposition()] { return editsText() || has(); }});
  separate();
  addBackgroundCommands(window, *m_menu->addMenu(tr("&Background")));
  separate();
  add({.identifier = QStringLiteral("preferences"),
       .text = tr("Pre&ferences…"),
       .shortcuts = {QKeySequence(Qt::CTRL | Qt::Key_Comma)},
       .run = [&window] { window.services().showPreferences(); }});
}

void MenuMaker::addClipboard() {
  TYWindowController& window = m_window;
  const auto canCopy = [&window] {
    return editsText() || window.editsKeyFrames() || DocumentClipboard(window.document()).canCopy();
  };
  const auto put = [](std::unique_ptr<QMimeData> data) {
    if (data) QApplication::clipboard()->setMimeData(data.release());
  };
  add({.identifier = QStringLiteral("cut"),
       .text = tr("Cu&t"),
       .shortcuts = {QKeySequence::Cut},
       .run =
           [&window, put] {
             if (editsText())
               callField("cut");
             else if (window.editsKeyFrames())
               put(KeyFrameClipboard(window.document()).cut());
             else
               put(DocumentClipboard(window.document()).cut());
           },
       .canRun = canCopy,
       .needs = selectFirst()});
  add({.identifier = QStringLiteral("copy"),
       .text = tr("&Copy"),
       .shortcuts = {QKeySequence::Copy},
       .run =
           [&window, put] {
             if (editsText())
               callField("copy");
             else if (window.editsKeyFrames())
               put(KeyFrameClipboard(window.document()).copy());
             else
               put(DocumentClipboard(window.document()).copy());
           },
       .canRun = canCopy,
       .needs = selectFirst()});
  add({.identifier = QStringLiteral("paste"),
       .text = tr("&Paste"),
       .shortcuts = {QKeySequence::Paste},
       .run =
           [&window] {
             if (editsText())
               callField("paste");
             else
               pasteInto(window);
           },
       .canRun =
           [&window] {
             const QMimeData* data = QApplication::clipboard()->mimeData();
             return editsText() ||
                    (window.composition() && data && DocumentClipboard::pasteboardIsValid(*data));
           },
       .needs = tr("The clipboard holds no component, key frame, image or text.")});
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
       .run =
           [&window] {
             if (window.editsKeyFrames())
               KeyFrameClipboard(window.document()).deleteSelected();
             else
               DocumentCommands(window.document()).deleteSelection();
           },
       .canRun =
           [&window, selected = hasSelection()] {
             return !editsText() && (selected() || window.editsKeyFrames());
           },
       .needs = selectFirst()});
}

}  // namespace app
