// SPDX-License-Identifier: MIT
#include "rostermodel.h"

#include "formatting.h"

using namespace Qt::StringLiterals;

namespace {

/// A longer nick comes from a hostile server, and its layout takes long.
constexpr qsizetype maxShown = 128;

struct look
{
    /// The line of the pixmap's palette for "+", the inside of the ball.
    const char *fill = nullptr;
    const char *words = nullptr;
};

/// By isupport::rank.
constexpr look looks[] = {{},
                          {"+\tc #EEEE22", QT_TRANSLATE_NOOP("rostermodel", "%1, voiced")},
                          {"+\tc #00FFFF", QT_TRANSLATE_NOOP("rostermodel", "%1, half-operator")},
                          {"+\tc #11BB22", QT_TRANSLATE_NOOP("rostermodel", "%1, operator")}};

QPixmap ball(const char *fill)
{
    if (fill == nullptr)
        return {};
    const char *const xpm[] = {
        "7 10 4 1", " \tc None", ".\tc #000000", fill,      "@\tc #FFFFFF", "       ", "       ", "       ",
        "  ...  ",  " .+++. ",   ".+@+++@",      ".+++++@", ".+++++@",      " .+++@ ", "  @@@  ",
    };
    return QPixmap(xpm);
}

isupport::rank rankOf(const ircchanneluser &member)
{
    if (member.isOp())
        return isupport::rank::op;
    if (member.isHalfop())
        return isupport::rank::halfop;
    return member.isVoice() ? isupport::rank::voice : isupport::rank::none;
}

} // namespace

rostermodel::rostermodel(QObject *parent) : QAbstractListModel(parent), manner(&manners::classic())
{
    for (const look &shown : looks)
        balls.push_back(ball(shown.fill));
}

void rostermodel::setMembers(const ircuserlist &roster)
{
    beginResetModel();
    members = roster;
    endResetModel();
}

int rostermodel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(members.size());
}

QString rostermodel::shown(const ircchanneluser &member) const
{
    const QString nick = member.nick().left(maxShown);
    return manner->plainFields ? unformatted(nick) : nick;
}

QVariant rostermodel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ircchanneluser &member = members.at(index.row());
    const auto rank = static_cast<size_t>(rankOf(member));
    const auto inWords = [&] {
        const QString nick = shown(member);
        return rank == 0 ? nick : tr(looks[rank].words).arg(nick);
    };
    switch (role) {
    case NickRole:
        return member.nick();
    case RankRole:
        return static_cast<int>(rank);
    case Qt::DisplayRole:
        return shown(member);
    case Qt::DecorationRole:
        return rank == 0 ? QVariant() : balls.at(rank);
    case Qt::AccessibleTextRole:
        return inWords();
    case Qt::ToolTipRole:
        // A tool tip reads markup, and a nick may contain some.
        return QString(u"<qt>" + inWords().toHtmlEscaped() + u"</qt>");
    default:
        return {};
    }
}
