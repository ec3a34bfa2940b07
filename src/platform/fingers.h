// SPDX-License-Identifier: MIT
#pragma once

class QEvent;
class QScreen;
class QWidget;

/// The minimum width and height, in pixels, of what a finger can hit.
constexpr int fingerSize = 28;

/// Whether `screen` is that of a handheld, with few pixels in at least one direction.
bool isSmall(const QScreen &screen);

/// On a handheld, `dialog` will fill the screen as the main window does. Call it before the dialog is shown.
void fillSmallScreen(QWidget *dialog);

/// Whether fingers are used here: there is a touch screen, or the main screen is small. May change while the
/// program runs; false while there is no screen at all.
bool fingersUsed();

/// The height, in pixels, of a row or a button that is usually `usual` high: more where fingers are used.
int fingerHeight(int usual);

/// Whether what is down may become a long press: a finger or the left button. Qt's gesture takes any button. `event` is the
/// latest one of a widget; if it presses nothing, the answer stays as it was `before`.
bool mayHold(const QEvent &event, bool before);
