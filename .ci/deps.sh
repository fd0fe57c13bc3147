#!/usr/bin/env bash
# Installs what the build and the tests need on a Debian 12 machine, and only
# what is missing. Runs as root; `apt-get update` once, before the first install.
set -euo pipefail
pkgs=(cmake ninja-build g++ make qt6-base-dev libqt6sql6-sqlite libgl-dev
      libgtest-dev libgmock-dev libbenchmark-dev libsqlite3-dev xvfb
      libdxflib-dev python3-ezdxf qt6-translations-l10n
      librsvg2-bin desktop-file-utils dpkg-dev)  # icons, desktop entry check, .deb dependencies
missing=()
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  if [ "$(id -u)" -ne 0 ]; then SUDO=sudo; else SUDO=; fi
  export DEBIAN_FRONTEND=noninteractive
  $SUDO apt-get update -qq
  $SUDO apt-get install -y -qq "${missing[@]}" >/dev/null
fi
