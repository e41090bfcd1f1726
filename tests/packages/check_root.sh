#!/usr/bin/env bash
# Installs packages into a new system, draws, opens the window and builds the star there: check_root.sh
# FOLDER_OF_PACKAGES. Needs root and the network.
set -euo pipefail
packages=$(realpath "$1")
here=$(dirname "$(realpath "$0")")
. /etc/os-release

mmdebstrap --variant=minbase --aptopt='APT::Install-Recommends "false"' \
  --customize-hook='mkdir "$1/packages"' \
  --customize-hook="cp $packages/*.deb $here/use_installed.sh \"\$1/packages\"" \
  --customize-hook='chroot "$1" env -u CMAKE_C_COMPILER_LAUNCHER -u CMAKE_CXX_COMPILER_LAUNCHER bash -eu /packages/use_installed.sh' \
  "$VERSION_CODENAME" /dev/null
echo "the packages draw, open the window and build the star in a new system"
