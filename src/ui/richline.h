// SPDX-License-Identifier: MIT
#pragma once

#include <QRgb>
#include <QString>

#include <vector>

/// A run of characters with the same look.
struct richspan
{
    enum style : quint8 { plain = 0, bold = 1, underline = 2, italic = 4, strike = 8, reverse = 16 };

    int start = 0;
    int length = 0;
    /// 0 means the view's text colour.
    QRgb colour = 0;
    /// 0 is none.
    QRgb background = 0;
    quint8 styles = plain;
};

/// A line of rich text after parsing: its characters, and the runs of them that are not plain.
///
/// The text may be a stranger's, so what is read is little and costs time in proportion to the length: <font color>,
/// <b>, <u>, <i> and, for sessions by address, <ſmark color> for the background, <ſs> and <ſreverse> switch a look on
/// and off, in any order; the letter ſ is not in Latin-1, so no classic server can write these. All other
/// tags vanish, and nothing is loaded or laid out for them. Entities become their characters. What is no tag or entity
/// stays as it is. No character of the result breaks the line.
class richline
{
public:
    explicit richline(QStringView markup);

    const QString &text() const { return m_text; }
    /// In the order of the text. Plain text has no span.
    const std::vector<richspan> &spans() const { return m_spans; }

private:
    void appendText(QStringView piece);
    /// Reads a tag at the start of `rest` and returns its length; 0 if there is none.
    qsizetype readTag(QStringView rest);
    qsizetype readEntity(QStringView rest);
    void applyTag(QStringView name, QStringView attributes, bool closing);
    /// Ends the run of characters since the last change of look.
    void endSpan();

    QString m_text;
    std::vector<richspan> m_spans;
    int spanStart = 0;
    QRgb colour = 0;
    QRgb background = 0;
    quint8 styles = richspan::plain;
};
