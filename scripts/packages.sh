# Sourced by the other scripts: installs the Debian packages that are missing.

run_packages="g++ cmake ninja-build pkg-config libglib2.0-dev-bin libgtk-3-dev libwebkit2gtk-4.1-dev libepoxy-dev libxml2-dev
  libsqlite3-dev libx11-dev fonts-dejavu-core bubblewrap xdg-dbus-proxy
  gstreamer1.0-libav"
test_packages="libgtest-dev clang-format clang-tidy xvfb openbox xdotool wmctrl x11-utils imagemagick dbus at-spi2-core
  gir1.2-atspi-2.0 gir1.2-gtk-3.0 python3-gi python3 python3-pil python3-pyatspi poppler-utils
  util-linux openssl ca-certificates webkit2gtk-driver desktop-file-utils xdg-utils appstream ffmpeg"
package_packages="debhelper dpkg-dev fakeroot"
window_manager_packages="xfwm4 marco mate-settings-daemon-common mutter kwin-x11 fluxbox icewm i3-wm weston xwayland"

install_missing() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  echo "Installing: ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Neither root nor sudo: install these packages by hand." >&2; exit 1; }
    as_root=(sudo)
  fi
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" \
    >/dev/null || { echo "The packages could not be installed." >&2; exit 1; }
}
