#!/usr/bin/env bash
# Installs packages into a new system and draws there: check_root.sh FOLDER_OF_PACKAGES. Needs root and the network.
set -euo pipefail
packages=$1
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
. /etc/os-release

mmdebstrap --variant=minbase --aptopt='APT::Install-Recommends "false"' \
  --customize-hook="mkdir -p \"\$1/packages\" && cp $packages/objecthost_*.deb $packages/libakplatform_*.deb \"\$1/packages\"" \
  --customize-hook='chroot "$1" sh -c "apt-get install -y -q /packages/*.deb fonts-dejavu-core xvfb xauth xdotool"' \
  --customize-hook='chroot "$1" sh -c "objecthost --version && objecthost demo /tmp/demo && ls -l /tmp/demo"' \
  --customize-hook='chroot "$1" sh -c "cd /tmp && (xvfb-run -a sh -c \"objecthost-window demo/scene.akd & i=0;
      until xdotool search --name scene; do sleep 1; i=\\\$((i + 1)); [ \\\$i -lt 60 ] || exit 1; done; kill \\\$!\")"' \
  "$VERSION_CODENAME" "$root/system.tar"
echo "the packages draw and open the window in a new system"
