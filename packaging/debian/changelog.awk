# SPDX-License-Identifier: MIT
# Writes CHANGELOG.md as Debian's packages carry it: awk -v package=NAME -f changelog.awk CHANGELOG.md
function sign() {
  if (date == "") return
  command = "LC_ALL=C date -u -R -d " date
  command | getline stamp
  close(command)
  printf "\n -- The Lumenvale developers <developers@lumenvale.app>  %s\n\n", stamp
}
function wrap(text,    words, count, line, i) { # to 79 columns, as Debian's changelogs are
  count = split(text, words, " ")
  line = "  *"
  for (i = 1; i <= count; ++i) {
    if (length(line) + 1 + length(words[i]) > 79) { print line; line = "   " }
    line = line " " words[i]
  }
  print line
}
match($0, /^## \[[0-9.]+\] - [0-9-]+$/) {
  sign()
  version = $2; gsub(/[][]/, "", version); date = $4
  printf "%s (%s-1) unstable; urgency=medium\n\n", package, version
}
date != "" && /^- / { wrap(substr($0, 3)) }
END { sign() }
