#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# The version of the game is set once, by project() in CMakeLists.txt, and
# written by the build into versione.h. The changelog's newest entry, the
# AppStream data's newest release and the manual page's title must all name
# it: this check fails, saying which one lags, when a release forgot one.
#   packaging/controlla_versione.sh <build folder>
set -eu
intestazione="${1:?usage: controlla_versione.sh <build folder>}/generato/versione.h"
versione=$(sed -n 's/^#define TAVOLATA_VERSIONE "\(.*\)"$/\1/p' "$intestazione")
[ -n "$versione" ] || { echo "no version in $intestazione" >&2; exit 1; }
cd "$(dirname "$0")"

registro=$(sed -n '1s/^tavolata (\([^-)]*\)-[^)]*).*/\1/p' changelog)
appstream=$(sed -n 's/.*<release version="\([^"]*\)".*/\1/p' io.github.tavolata.Tavolata.metainfo.xml | head -n 1)
manuale=$(sed -n '1s/^\.TH .*"Tavolata \([^"]*\)".*/\1/p' tavolata.6)

esito=0
for coppia in "packaging/changelog (newest entry):$registro" \
              "packaging/io.github.tavolata.Tavolata.metainfo.xml (newest release):$appstream" \
              "packaging/tavolata.6 (title line):$manuale"; do
  dove=${coppia%%:*}
  trovata=${coppia#*:}
  if [ "$trovata" != "$versione" ]; then
    echo "version mismatch: $dove says \"$trovata\", CMakeLists.txt project() says \"$versione\"" >&2
    esito=1
  fi
done
[ $esito -ne 0 ] || echo "version $versione: changelog, AppStream data and manual page agree"
exit $esito
