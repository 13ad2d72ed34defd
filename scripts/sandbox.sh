# Sourced by the other scripts: goes on without the sandbox of pages on a machine that allows none, and says so.

if [ -z "${MARLOWICK_SANDBOX:-}" ]; then
  if [ -e /.flatpak-info ]; then
    no_sandbox="there is a /.flatpak-info"
  elif [ ! -x /usr/bin/xdg-dbus-proxy ]; then
    no_sandbox="there is no xdg-dbus-proxy"
  else
    no_sandbox=$(/usr/bin/bwrap --die-with-parent --unshare-pid --unshare-uts --unshare-net --ro-bind / / --proc /proc \
      --dev /dev /bin/true 2>&1) && no_sandbox= || no_sandbox=${no_sandbox:-bwrap failed}
  fi
  if [ -n "$no_sandbox" ]; then
    echo "This machine allows no sandbox ($no_sandbox): pages run without one, by MARLOWICK_SANDBOX=off"
    export MARLOWICK_SANDBOX=off
  fi
fi
