#!/usr/bin/env bash
# Installs the Debian package into a fresh, minimal Debian 12 (made by debootstrap, without
# recommended packages) and uses it there as a forester would: the installed sample through the
# command line (yields through the stand-ins, a rate search, the written report) and every
# screen of the desktop program on the offscreen platform. Run as root, outside CI; it needs
# Debian's mirror.
#
#   scripts/check-deb-clean.sh PACKAGE.deb [ROOT]      (ROOT default /tmp/arborex-clean-bookworm)
set -euo pipefail
package=$(realpath "${1:?usage: scripts/check-deb-clean.sh PACKAGE.deb [ROOT]}")
root=${2:-/tmp/arborex-clean-bookworm}
mirror=http://deb.debian.org/debian

command -v debootstrap >/dev/null || apt-get install -y debootstrap >/dev/null
rm -rf "$root"
debootstrap --variant=minbase bookworm "$root" "$mirror" >/dev/null
cat >"$root/etc/apt/sources.list" <<EOF
deb $mirror bookworm main
deb $mirror bookworm-updates main
deb http://deb.debian.org/debian-security bookworm-security main
EOF
cp /etc/resolv.conf "$root/etc/resolv.conf"
# The X server's sockets are shared with the new system; on a machine that never ran one the
# folder is made first, so that the bind mount cannot fail and leave /proc mounted.
mkdir -p -m 1777 /tmp/.X11-unix
mkdir -p "$root/tmp/.X11-unix"
xserver=
cleanup() {
  [ -n "$xserver" ] && kill "$xserver" 2>/dev/null || true
  umount "$root/tmp/.X11-unix" "$root/proc" 2>/dev/null || true
}
trap cleanup EXIT
mount -t proc proc "$root/proc"
mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix"
in_root() {
  chroot "$root" env -i PATH=/usr/bin:/bin HOME=/root LANG=C.UTF-8 XDG_RUNTIME_DIR=/tmp/runtime "$@"
}

cp "$package" "$root/tmp/"
in_root apt-get update -qq
in_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
  "/tmp/$(basename "$package")" >/dev/null
echo "installed: $(in_root dpkg-query -W -f='${Package} ${Version}' arborex)"

in_root sh -ec '
  mkdir -p /tmp/trial && cd /tmp/trial
  cp /usr/share/arborex/sample/sample.arx .
  arborex-batch yields sample.arx --all --quiet >/dev/null
  arborex-batch calc sample.arx --search --start-year 2026 --quiet >/dev/null
  arborex-batch report sample.arx report.rtf --quiet
  arborex-batch calc sample.arx --rate 400 --start-year 2026 --json | head -c 200; echo
  test -s report.rtf
'
install -d -m 700 "$root/tmp/runtime"
# The desktop program on the offscreen platform, then under a real X server (the host's Xvfb,
# reached through its socket) with the package's own xcb platform.
in_root env QT_QPA_PLATFORM=offscreen arborex --grab /tmp/grab >/dev/null 2>&1
echo "screens grabbed offscreen: $(ls "$root/tmp/grab"/*.png | wc -l)"
if command -v Xvfb >/dev/null; then
  Xvfb :97 -screen 0 1280x1024x24 >/dev/null 2>&1 &
  xserver=$!
  sleep 2
  in_root env DISPLAY=:97 arborex --grab /tmp/grab-x11 >/dev/null 2>&1
  echo "screens grabbed under X: $(ls "$root/tmp/grab-x11"/*.png | wc -l)"
fi
[ "$(ls "$root/tmp/grab"/*.png | wc -l)" -gt 20 ]
echo "The package installs and runs on a clean Debian 12."
