#!/usr/bin/env bash
# Installs the build into a scratch prefix and checks what a Linux desktop needs of it: the
# launcher, the AppStream description and the icon at every usual size, each valid.
# Usage: check-install.sh BUILD_DIR
set -euo pipefail
build=$1
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
cmake --install "$build" --prefix "$prefix" >/dev/null
id=app.zephyrdock.Zephyrdock
test -x "$prefix/bin/Zephyrdock"
desktop-file-validate "$prefix/share/applications/$id.desktop"
appstreamcli validate --no-net --pedantic "$prefix/share/metainfo/$id.metainfo.xml"
for size in 16 24 32 48 64 128 256 512; do
  icon="$prefix/share/icons/hicolor/${size}x${size}/apps/$id.png"
  # The PNG header's width and height, big-endian at bytes 16 and 20.
  read -r w h < <(od -An -tu1 -j16 -N8 "$icon" | awk '{print $1*16777216+$2*65536+$3*256+$4, $5*16777216+$6*65536+$7*256+$8}')
  [ "$w" = "$size" ] && [ "$h" = "$size" ] || { echo "icon $icon is ${w}x${h}"; exit 1; }
done
echo "installed launcher, metainfo and ${size}px..16px icons are valid"
