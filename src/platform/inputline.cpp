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

/// QLineEdit passes every change through its validator, typed or not, and takes the text as the validator
/// leaves it.
class oneline : public QValidator
{
public:
    using QValidator::QValidator;

    State validate(QString &text, int & /*cursor*/) const override
    {
        std::replace_if(text.begin(), text.end(), breaksLine, u' ');
        return Acceptable;
    }
};

} // namespace

inputline::inputline(QWidget *parent, const QString &text) : QLineEdit(parent)
{
    setValidator(new oneline(this));
    setText(text);
}
