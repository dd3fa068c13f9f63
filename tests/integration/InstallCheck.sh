#!/bin/sh
# Installs the build into a temporary prefix, then builds and runs the example C client against
# the installed headers and libraries, found through pkg-config alone.
#   InstallCheck.sh BUILD_DIR WORK_DIR CLIENT_SOURCE C_COMPILER [EXTRA_CFLAGS]
set -eu
build_dir=$1 work_dir=$2 client_source=$3 cc=$4 extra_cflags=${5:-}

if ! command -v pkg-config >/dev/null 2>&1; then
    echo "pkg-config is not installed: skipping the installation check"
    exit 77
fi

rm -rf "$work_dir"
prefix=$work_dir/prefix
cmake --install "$build_dir" --prefix "$prefix" >/dev/null

pc_file=$(find "$prefix" -name kelservices.pc | head -n 1)
export PKG_CONFIG_PATH=$(dirname "$pc_file")
pkg() { pkg-config --define-variable=prefix="$prefix" "$@" kelservices; }

# shellcheck disable=SC2046,SC2086
"$cc" -std=c99 -Wall -Wextra -Werror $extra_cflags "$client_source" $(pkg --cflags) $(pkg --libs) \
    -o "$work_dir/kel_client"

mkdir -p "$work_dir/home"
HOME=$work_dir/home XDG_CONFIG_HOME=$work_dir/home/.config \
    KEL_BUNDLE_PATH=$prefix/share/kel/bundles LD_LIBRARY_PATH=$(pkg --variable=libdir) \
    "$work_dir/kel_client"
