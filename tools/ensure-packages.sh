#!/usr/bin/env bash
# Installs the Debian packages of the named groups that are missing: tools/ensure-packages.sh build [test] [bench]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
missing=()
for group in "$@"; do
  while read -r g package; do
    [ "$g" = "$group" ] || continue
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)" = installed ] || missing+=("$package")
  done < "$here/packages.txt"
done
[ ${#missing[@]} -eq 0 ] && exit 0
sudo=()
[ "$(id -u)" = 0 ] || sudo=(sudo)
echo "Installing: ${missing[*]}"
"${sudo[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" > /dev/null
