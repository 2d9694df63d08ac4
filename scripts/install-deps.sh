#!/usr/bin/env bash
# Installs the Debian packages tsaw needs to build and test. Quiet and quick when all are there.
set -euo pipefail

packages=(build-essential cmake pkg-config libgtest-dev libgmock-dev libbenchmark-dev libcli11-dev
          qt6-base-dev libgit2-dev libssl-dev zlib1g-dev libisal-dev nlohmann-json3-dev help2man dpkg-dev
          fakeroot)
# `install-deps.sh fuzz`: also clang with its sanitizer runtimes and libFuzzer.
if [ "${1:-}" = fuzz ]; then
  packages+=(clang-14 libclang-rt-14-dev libfuzzer-14-dev)
fi

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo_cmd=()
[ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
