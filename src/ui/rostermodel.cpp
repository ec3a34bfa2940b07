// SPDX-License-Identifier: MIT
#include "rostermodel.h"

namespace {

/// A longer nick is a hostile server's, and takes long to lay out.
constexpr qsizetype maxShown = 128;

/// A ball of 7 x 10 pixels, filled with what the palette line `fill` says of the pixel "+".
QPixmap ball(const char *fill)
{
    const char *const xpm[] = {
        "7 10 4 1", " \tc None", ".\tc #000000", fill,      "@\tc #FFFFFF", "       ", "       ", "       ",
        "  ...  ",  " .+++. ",   ".+@+++@",      ".+++++@", ".+++++@",      " .+++@ ", "  @@@  ",
    };
    return QPixmap(xpm);
}

} // namespace

rostermodel::rostermodel(QObject *parent)
    : QAbstractListModel(parent),
      opIcon(ball("+\tc #11BB22")),
      halfopIcon(ball("+\tc #00FFFF")),
      voiceIcon(ball("+\tc #EEEE22"))
{
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

QVariant rostermodel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ircchanneluser &member = members.at(index.row());
    if (role == NickRole)
        return member.nick();
    if (role == Qt::DisplayRole)
        return member.nick().left(maxShown);
    if (role != Qt::DecorationRole)
        return {};
    if (member.isOp())
        return opIcon;
    if (member.isHalfop())
        return halfopIcon;
    if (member.isVoice())
        return voiceIcon;
    return {};
}
