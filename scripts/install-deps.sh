#!/usr/bin/env bash
# Installs the Debian packages that Orvik needs to build, test and run,
# skipping those already installed. Works on Debian 12 and Ubuntu 22.04+.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config python3
  libgtest-dev                  # tests
  libboost-math-dev             # tests only: reference values for the statistics library
  qt6-base-dev libgl-dev        # the window application
  libqcustomplot-dev qt6-svg-dev  # its charts, saved as pictures
  xvfb xauth                    # running the window application without a display
  libsqlite3-dev                # project files and the database import
  libzip-dev libexpat1-dev      # reading Excel workbooks (.xlsx)
  libxlsxwriter-dev             # writing them
  libfreexl-dev                 # reading Excel 97-2003 workbooks (.xls)
  mdbtools-dev                  # the database import from Access files
  clang libclang-rt-14-dev      # fuzzing with libFuzzer (fuzz/run.sh)
)

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$package")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then sudo_cmd=(sudo); fi
"${sudo_cmd[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
