# SPDX-License-Identifier: MIT
# Debian's changelog from CHANGELOG.md: awk -v maintainer="Name <address>" -f debian-changelog.awk CHANGELOG.md

function finish() {
    if (date)
        printf "\n -- %s  %s\n\n", maintainer, date
}

/^## / {
    finish()
    printf "parlo (%s) unstable; urgency=medium\n\n", $2
    ("date -uR -d " substr($3, 2, 10)) | getline date
}

/^- / { print "  *" substr($0, 2) }
/^  / { print "  " $0 }

END { finish() }
