#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# What scripts/capture takes of a machine: capture.sh TOP. All that the readers need, and no name or address.
set -euo pipefail
top=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cp -r "$top/tests/linux/trees/laptop" "$work/machine"
net=$work/machine/sys/class/net
mv "$net/enp0s31f6" "$net/enx0123456789ab"
mv "$net/wg0" "$net/acme-office"
mkdir "$net/acme-office/device"
ln -s ../../../../bus/xen-backend "$net/acme-office/device/subsystem"
printf 'Iface\tDestination\tGateway\n%s\t00000000\t0123A8C0\t0003\t0\t0\t100\t00000000\n%s\t0023A8C0\t00000000\t0001\t0\t0\t0\t00FFFFFF\n' \
  acme-office enx0123456789ab >"$work/machine/proc/net/route"
sed -i 's/enp0s31f6/enx0123456789ab/; s/wg0/acme-office/' "$work/machine/proc/net/dev" "$net"/*/uevent
echo "PCI_SLOT_NAME=0000:00:1f.6" >>"$net/enx0123456789ab/device/uevent"
echo 01:23:45:67:89:ab >"$net/enx0123456789ab/address"

"$top/scripts/capture" "$work/captured" "$work/machine"
if grep -rE '0123456789ab|acme|01:23|0123A8C0|0000:00|1700000000' "$work/captured" || find "$work/captured" | grep -E '0123456789ab|acme'; then
  echo "a name, an address or the boot time was captured"
  exit 1
fi
# The link keeps what its kind is told by, and its counters.
grep -qE '^enlink[0-9]+: 5000000000 ' "$work/captured/proc/net/dev"
grep -qx 'DRIVER=constructed' "$work"/captured/sys/class/net/enlink*/device/uevent
grep -qx 'DEVTYPE=wireguard' "$work"/captured/sys/class/net/link*/uevent
[[ $(grep -rl INTERFACE=docker0 "$work/captured" | wc -l) -eq 2 ]] # its own, and that of the link it is master of
[[ $(cut -f 1,4,8 "$work/captured/proc/net/route") == link*$'\t0003\t00000000' ]]
[[ $(readlink "$work"/captured/sys/class/net/link*/device/subsystem) == */xen-backend ]]

# A machine whose names all come from the kernel comes through as it is, but for the boot time.
"$top/scripts/capture" "$work/server" "$top/tests/linux/trees/server"
diff -r --exclude=README --ignore-matching-lines='^btime ' "$top/tests/linux/trees/server" "$work/server"
