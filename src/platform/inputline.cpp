// SPDX-License-Identifier: MIT
#include "inputline.h"

#include <QValidator>

#include <algorithm>

namespace {

bool breaksLine(QChar c)
{
    return c == u'\n' || c == u'\r' || c == u'\0' || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
}

/// Without those that have no visible text.
QStringList linesOf(const QString &text)
{
    QStringList lines;
    const auto *begin = text.begin();
    while (begin != text.end()) {
        const auto *end = std::find_if(begin, text.end(), breaksLine);
        const QString line(begin, end - begin);
        if (!line.trimmed().isEmpty())
            lines.append(line);
        begin = end == text.end() ? end : end + 1;
    }
    return lines;
}

/// QLineEdit passes every change through its validator, typed or not, and takes the text as the validator
/// leaves it.
class oneline : public QValidator
{
public:
    explicit oneline(inputline *line) : QValidator(line), edit(line) {}

    State validate(QString &text, int & /*cursor*/) const override
    {
        if (std::none_of(text.begin(), text.end(), breaksLine))
            return Acceptable;
        const QStringList lines = linesOf(text);
        std::replace_if(text.begin(), text.end(), breaksLine, u' ');
        Q_EMIT edit->joined(lines);
        return Acceptable;
    }

private:
    inputline *edit;
};

} // namespace

inputline::inputline(QWidget *parent, const QString &text) : QLineEdit(parent)
{
    setValidator(new oneline(this));
    setText(text);
}
