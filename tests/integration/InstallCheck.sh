#!/bin/sh
# Installs the build into a temporary prefix, then runs the installed kelpick and builds and runs
# the example C client against the installed headers and libraries, found through pkg-config
# alone. Both run with a clean environment: nothing tells them where the libraries or the
# bundle are, as after an installation on a user's machine.
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

mkdir -p "$work_dir/home"
# Only what a login gives, plus what the sanitizer build needs to report.
clean() {
    env -i HOME="$work_dir/home" PATH=/usr/bin:/bin \
        ${ASAN_OPTIONS+ASAN_OPTIONS="$ASAN_OPTIONS"} ${LSAN_OPTIONS+LSAN_OPTIONS="$LSAN_OPTIONS"} \
        "$@"
}

if [ -x "$prefix/bin/kelpick" ]; then
    answer=$(clean "$prefix/bin/kelpick" ask-save --document Report --headless --script key:return)
    if [ "$answer" != save ]; then
        echo "the installed kelpick answered '$answer', not 'save'"
        exit 1
    fi
    echo "installed kelpick: $answer"
fi

# The client is linked the way a packager would, with a run path to the installed libraries.
# shellcheck disable=SC2046,SC2086
"$cc" -std=c99 -Wall -Wextra -Werror $extra_cflags "$client_source" $(pkg --cflags) $(pkg --libs) \
    -Wl,-rpath,"$(pkg --variable=libdir)" -o "$work_dir/kel_client"
clean "$work_dir/kel_client"
# The open example builds from the installed headers alone as well.
# shellcheck disable=SC2046,SC2086
"$cc" -std=c99 -Wall -Wextra -Werror $extra_cflags "$(dirname "$client_source")/open_files.c" \
    $(pkg --cflags) $(pkg --libs) -Wl,-rpath,"$(pkg --variable=libdir)" -o "$work_dir/open_files"
