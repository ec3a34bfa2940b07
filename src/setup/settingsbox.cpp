// SPDX-License-Identifier: MIT
#include "settingsbox.h"

#include "box.h"
#include "fingers.h"
#include "form.h"
#include "inputline.h"

#include <QCheckBox>
#include <QDir>
#include <QFontInfo>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScroller>
#include <QSpinBox>
#include <QStandardPaths>
#include <QStyle>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int maxScrollback = 1'000'000;
constexpr int scrollbackStep = 500;
constexpr int margin = 4;
/// With rows as high as a finger, all of them fit above the button and below the title of the window.
constexpr int rowSpacing = 2;

/// Points, or the desktop's own size below them. Up goes from there to what is next to that size.
class pointsbox : public QSpinBox
{
public:
    pointsbox(int desktopSize, QWidget *parent) : QSpinBox(parent), own(desktopSize)
    {
        setRange(preferences::minFont - 1, preferences::maxFont);
        setSpecialValueText(QObject::tr("Desktop's own"));
    }

    void stepBy(int steps) override
    {
        if (value() == minimum() && steps > 0)
            setValue(preferences::stepped(own, steps));
        else
            QSpinBox::stepBy(steps);
    }

private:
    int own;
};

/// Where the logs are, as people write it.
QString logFolder()
{
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/parlo"_s;
    const QString home = QDir::homePath();
    return folder.startsWith(home + u'/') ? u'~' + folder.mid(home.size()) : folder;
}

} // namespace

settingsbox::settingsbox(preferences now, QWidget *window) : QDialog(window), shown(std::move(now))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Settings"));
    fillSmallScreen(this);

    // The rows fit on 240 x 320 pixels, unless the letters are very large.
    auto *rows = new QScrollArea(this);
    rows->setWidgetResizable(true);
    rows->setFrameShape(QFrame::NoFrame);
    rows->setFocusPolicy(Qt::NoFocus);
    rows->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QScroller::grabGesture(rows->viewport(), QScroller::TouchGesture);
    rows->setWidget(makeRows());
    rows->setMinimumWidth(rows->widget()->minimumSizeHint().width());
    auto *closeButton = new QPushButton(tr("&Close"), this);
    closeButton->setMinimumHeight(fingerHeight(0));
    // Return only ends what is typed in a field.
    closeButton->setAutoDefault(false);
    connect(closeButton, &QPushButton::clicked, this, &QDialog::accept);
    auto *column = box<QVBoxLayout>(this);
    column->addWidget(rows);
    column->addWidget(closeButton);

    const QSize wanted(sizeHint().width(),
                       rows->widget()->sizeHint().height() + closeButton->sizeHint().height());
    resize(wanted.boundedTo(screen()->availableSize()));
}

QWidget *settingsbox::makeRows()
{
    auto *page = new QWidget;
    auto *rows = new form(page);
    rows->setContentsMargins(margin, margin, margin, margin);
    rows->setHorizontalSpacing(margin);
    rows->setVerticalSpacing(rowSpacing);

    fontSize = new pointsbox(QFontInfo(parentWidget()->font()).pointSize(), page);
    fontSize->setValue(shown.fontSize == 0 ? fontSize->minimum() : shown.fontSize);
    scrollback = new QSpinBox(page);
    scrollback->setRange(0, maxScrollback);
    scrollback->setSingleStep(scrollbackStep);
    scrollback->setSpecialValueText(tr("All"));
    scrollback->setValue(shown.scrollback);
    scrollback->setToolTip(tr("So many lines a tab keeps; the older ones are dropped"));
    for (QSpinBox *number : {fontSize, scrollback}) {
        // The first digit of a number must not drop lines.
        number->setKeyboardTracking(false);
        number->setMinimumHeight(fingerHeight(0));
        connect(number, &QSpinBox::valueChanged, this, &settingsbox::apply);
    }
    const auto addSwitch = [this, page, rows](const QString &label, bool on) {
        auto *shownSwitch = new QCheckBox(label, page);
        shownSwitch->setChecked(on);
        shownSwitch->setMinimumHeight(fingerHeight(0));
        connect(shownSwitch, &QCheckBox::toggled, this, &settingsbox::apply);
        rows->addRow(shownSwitch);
        return shownSwitch;
    };
    // The Tab key goes from one to the next in the order in which they are made.
    rows->addRow(tr("Text &size:"), fontSize);
    rows->addRow(tr("Lines &kept:"), scrollback);
    times = addSwitch(tr("Show &times"), shown.times);
    userList = addSwitch(tr("Show &members"), shown.userListShown);
    notifies = addSwitch(tr("&Notify me of lines for me"), shown.notifies);
    highlights = rows->addInput(tr("&Highlight:"), inputline::asTyped, shown.highlights.join(u' '));
    highlights->setPlaceholderText(tr("words"));
    highlights->setToolTip(tr("Lines with one of these words are for you, as those with your nick"));
    highlights->setMinimumHeight(fingerHeight(0));
    connect(highlights, &QLineEdit::editingFinished, this, &settingsbox::apply);
    logs = addSwitch(tr("Write &logs"), shown.logs);
    auto *where = new QLabel(tr("in %1").arg(logFolder()), page);
    // Below the words of the switch.
    where->setIndent(style()->pixelMetric(QStyle::PM_IndicatorWidth) + margin);
    // A long path must not make the page wider.
    where->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    where->setToolTip(logFolder());
    logs->setAccessibleDescription(where->text());
    rows->addRow(where);
    reopens = addSwitch(tr("Start where I &was"), shown.reopens);
    reopens->setToolTip(tr("The connect dialog proposes the last session by address"));
    return page;
}

void settingsbox::apply()
{
    preferences wanted = shown;
    wanted.fontSize = fontSize->value() == fontSize->minimum() ? 0 : fontSize->value();
    wanted.scrollback = scrollback->value();
    wanted.times = times->isChecked();
    wanted.userListShown = userList->isChecked();
    wanted.notifies = notifies->isChecked();
    wanted.highlights = preferences::words(highlights->text());
    wanted.logs = logs->isChecked();
    wanted.reopens = reopens->isChecked();
    if (wanted == shown)
        return;
    shown = wanted;
    Q_EMIT changed(shown);
}

void settingsbox::done(int result)
{
    // What was typed and not yet ended with Return.
    fontSize->interpretText();
    scrollback->interpretText();
    apply();
    QDialog::done(result);
}
