#pragma once

class QAbstractButton;
class QLineEdit;
class QWidget;

namespace widgets {

/// The wheel scrolls the pane; the control that happens to lie under the pointer stays as it is.
void leaveWheelToPane(QWidget& control);
/// Undo and redo are the window's business where the field has nothing of its own to take back.
void leaveUndoToWindow(QLineEdit& field);
/// The space bar is a command of the window; the button is pressed with Return.
void leaveSpaceToWindow(QAbstractButton& button);

}  // namespace widgets
