// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// What a mouse, a finger or the keys Left and Right pull to change the width of the widget to its right.
class widthhandle : public QWidget
{
    Q_OBJECT

public:
    /// `right` is that widget.
    widthhandle(QWidget *right, QWidget *parent);

Q_SIGNALS:
    /// The user wants the widget to be so wide, in pixels: perhaps more or less than is possible.
    void wanted(int width);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *pulled;
    /// Where the pointer was when the button went down, on the screen, and how wide the widget was then.
    int startX = 0;
    int startWidth = 0;
};
