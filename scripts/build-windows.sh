#!/usr/bin/env bash
# Builds Plotwell for 64-bit Windows on Debian 12 and checks it under Wine:
#  1. installs what is missing (MinGW-w64, Wine, Xvfb, ...) from Debian;
#  2. cross-builds the small Qt that Plotwell needs from Debian's own qt6-base
#     sources (the version of the host's Qt, whose moc and rcc it uses), into a
#     cache under ~/.cache/plotwell kept by source version and options, so
#     that only the first run pays for it;
#  3. cross-builds GoogleTest from Debian's /usr/src/googletest;
#  4. builds Plotwell in build-windows/ with cmake/mingw-w64.cmake;
#  5. runs every test under Wine and Xvfb, and a smoke test of both programs
#     (plotwell-map.exe must answer as the Linux build does; plotwell.exe must
#     open a zone in a window titled "Plotwell v<version>", whose screenshot is
#     kept as build-windows/screenshot.png);
#  6. writes build-windows/plotwell-<version>-windows-x64.zip.
# Nothing but Debian's packages and sources is downloaded. A fault of the
# project (a build error, a test failing under Wine, a file missing from the
# zip) fails the script; Debian's archive not answering while no Qt is cached
# only skips the Windows build with a warning.
set -euo pipefail
cd "$(dirname "$0")/.."
repo=$PWD
out=$repo/build-windows
cache=${PLOTWELL_CACHE:-$HOME/.cache/plotwell}
triple=x86_64-w64-mingw32
toolchain=$repo/cmake/mingw-w64.cmake
jobs=2
started=$SECONDS

say() { echo "build-windows: $*"; }
fail() { echo "build-windows: $*" >&2; exit 1; }
elapsed() { say "$1 ($((SECONDS - started)) s so far)"; }

# Every run of a Windows program is bounded: a Qt fatal error under Wine
# opens a message box that waits for a click that never comes.
limit() { local seconds=$1; shift; timeout -k 10 "$seconds" "$@"; }

install_tools() {
  ./scripts/install-deps.sh
  local packages=(g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix mingw-w64-tools
                  binutils-mingw-w64-x86-64 wine wine64 xvfb xauth zip dpkg-dev googletest
                  xdotool x11-apps netpbm fonts-dejavu-core)
  local missing=() p
  for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return
  say "installing: ${missing[*]}"
  local sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  DEBIAN_FRONTEND=noninteractive $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# ---------------------------------------------------------------------------
# Qt

# The cross Qt must be the host Qt's version: its moc, rcc and uic run here.
qt_version=$(dpkg-query -W -f='${source:Version}' qt6-base-dev 2>/dev/null || true)

qt_options=(
  -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON
  -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_BENCHMARKS=OFF
  -DFEATURE_gui=ON -DFEATURE_widgets=ON -DFEATURE_testlib=ON -DFEATURE_concurrent=ON
  # The offscreen platform plugin (tests, drawing without a window) is built
  # only with FreeType: Qt's own copy.
  -DFEATURE_freetype=ON -DFEATURE_system_freetype=OFF
  -DFEATURE_opengl=OFF -DFEATURE_opengles2=OFF -DFEATURE_dynamicgl=OFF -DFEATURE_vulkan=OFF
  -DFEATURE_dbus=OFF -DFEATURE_sql=OFF -DFEATURE_network=OFF -DFEATURE_printsupport=OFF
  -DFEATURE_zstd=OFF -DFEATURE_icu=OFF -DFEATURE_fontconfig=OFF -DFEATURE_direct2d=OFF
  -DFEATURE_androiddeployqt=OFF
  # Debian's tarball leaves out src/3rdparty/wintab, which tablet events need.
  -DFEATURE_tabletevent=OFF
  -DFEATURE_system_zlib=OFF -DFEATURE_system_png=OFF -DFEATURE_system_jpeg=OFF
  -DFEATURE_system_harfbuzz=OFF -DFEATURE_system_pcre2=OFF -DFEATURE_system_doubleconversion=OFF
)

# Qt 6.4's windows platform plugin uses its DirectWrite font database, which
# is built only with Direct2D, whenever DirectWrite 3 is there: ask for both.
patch_qtbase() {
  local file=src/plugins/platforms/windows/qwindowsintegration.cpp
  grep -q 'QT_CONFIG(directwrite3)$' "$file" || fail "qtbase: $file is not as expected"
  sed -i 's/QT_CONFIG(directwrite3)$/QT_CONFIG(directwrite3) \&\& QT_CONFIG(direct2d)/' "$file"
}

# What the cached builds depend on: versions, options, the patch and the
# toolchain file's settings (not its comments).
toolchain_settings() { grep -v -e '^#' -e '^$' "$toolchain"; }

qt_key() {
  { echo "$qt_version"; printf '%s\n' "${qt_options[@]}"; declare -f patch_qtbase; toolchain_settings; } \
    | sha256sum | cut -c1-12
}

# Debian's source package, through an apt configuration of our own: the
# machine's sources as deb-src entries, with lists kept in the cache. The
# machine's own apt configuration is left alone. Fails when the archive does
# not answer.
fetch_qtbase() {
  local into=$1 apt=$cache/apt
  mkdir -p "$apt/parts" "$apt/lists/partial" "$into"
  rm -f "$apt"/parts/*
  local f n=0
  for f in /etc/apt/sources.list.d/*.sources; do
    [ -f "$f" ] || continue
    n=$((n + 1))
    sed 's/^Types:.*/Types: deb-src/' "$f" > "$apt/parts/$n.sources"
  done
  : > "$apt/sources.list"
  for f in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -f "$f" ] && sed -n 's/^deb \(.*\)/deb-src \1/p' "$f" >> "$apt/sources.list"
  done
  local private=(-o Dir::Etc::SourceList="$apt/sources.list" -o Dir::Etc::SourceParts="$apt/parts"
                 -o Dir::State::Lists="$apt/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=
                 -o APT::Sandbox::User=root)
  apt-get "${private[@]}" -qq update || return 1
  (cd "$into" && apt-get "${private[@]}" -qq --only-source source "qt6-base=$qt_version") || return 1
}

build_qt() {
  qt=$cache/qt6-base-$qt_version-$(qt_key)
  if [ -f "$qt/.complete" ]; then
    say "Qt $qt_version from $qt"
    return 0
  fi
  local work=$out/qtbase
  rm -rf "$work"
  mkdir -p "$work"
  say "fetching Debian's qt6-base $qt_version sources"
  if ! fetch_qtbase "$work/src"; then
    echo "build-windows: WARNING: Debian's archive did not give the qt6-base $qt_version sources, and no" >&2
    echo "build-windows: WARNING: Qt built from them is cached in $cache: the Windows build is skipped." >&2
    exit 0
  fi
  local source
  source=$(find "$work/src" -mindepth 1 -maxdepth 1 -type d -name 'qt6-base-*' | head -n 1)
  [ -n "$source" ] || fail "apt-get source left no qt6-base folder in $work/src"
  (cd "$source" && patch_qtbase)
  say "building Qt into $qt (about half an hour on two cores)"
  rm -rf "$qt"
  cmake -S "$source" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DCMAKE_INSTALL_PREFIX="$qt" -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
    "${qt_options[@]}" > "$work/configure.log" 2>&1 || { tail -n 40 "$work/configure.log"; fail "Qt's configure failed"; }
  nice -n 19 cmake --build "$work/build" -j "$jobs" > "$work/build.log" 2>&1 \
    || { tail -n 40 "$work/build.log"; fail "Qt's build failed (log: $work/build.log)"; }
  cmake --install "$work/build" > /dev/null
  touch "$qt/.complete"
  rm -rf "$work"
  elapsed "Qt built"
}

# ---------------------------------------------------------------------------
# GoogleTest, from the source Debian's googletest package installs

build_googletest() {
  local version key
  version=$(dpkg-query -W -f='${Version}' googletest)
  key=$({ echo "$version"; toolchain_settings; } | sha256sum | cut -c1-12)
  gtest=$cache/googletest-$version-$key
  [ -f "$gtest/.complete" ] && return
  local work=$out/googletest
  rm -rf "$work" "$gtest"
  cmake -S /usr/src/googletest -B "$work" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$gtest" -DBUILD_GMOCK=OFF -DBUILD_SHARED_LIBS=OFF \
    > "$out/googletest.log" 2>&1 || { tail -n 30 "$out/googletest.log"; fail "GoogleTest's configure failed"; }
  nice -n 19 cmake --build "$work" -j "$jobs" >> "$out/googletest.log" 2>&1 \
    || { tail -n 30 "$out/googletest.log"; fail "GoogleTest's build failed"; }
  cmake --install "$work" > /dev/null
  touch "$gtest/.complete"
  rm -rf "$work"
  elapsed "GoogleTest built"
}

# ---------------------------------------------------------------------------
# Plotwell

build_plotwell() {
  local build=$out/plotwell
  # Debian's rcc compresses resources with zstd unless told not to, and this
  # Qt has no zstd to read them back.
  cmake -S "$repo" -B "$build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_FIND_ROOT_PATH="$qt;$gtest" -DCMAKE_PREFIX_PATH="$qt;$gtest" \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
    -DCMAKE_AUTORCC_OPTIONS=--no-zstd -DBUILD_TESTING=ON -DCMAKE_CROSSCOMPILING_EMULATOR="$repo/scripts/wine-run.sh" \
    > "$out/configure.log" 2>&1 || { cat "$out/configure.log"; fail "configuring Plotwell for Windows failed"; }
  local status=0
  nice -n 19 cmake --build "$build" -j "$jobs" > "$out/build.log" 2>&1 || status=$?
  grep -E -A3 'warning:|error:|FAILED' "$out/build.log" | head -n 60 || true
  [ $status -eq 0 ] || fail "building Plotwell for Windows failed (log: $out/build.log)"
  # Plotwell's own code builds without a warning here as on Linux.
  ! grep -q 'warning:' "$out/build.log" || fail "the Windows build has warnings (log: $out/build.log)"
  version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
  elapsed "Plotwell built"
}

# ---------------------------------------------------------------------------
# Wine and a display

start_wine() {
  export WINEPREFIX=$out/wineprefix WINEDEBUG=-all WINEARCH=win64
  # No offer to download Mono or Gecko, which would wait for a click.
  export WINEDLLOVERRIDES="mscoree=;mshtml="
  local n=99
  while [ -e "/tmp/.X11-unix/X$n" ] || [ -e "/tmp/.X$n-lock" ]; do n=$((n + 1)); done
  Xvfb ":$n" -screen 0 1280x900x24 -nolisten tcp > "$out/xvfb.log" 2>&1 &
  xvfb=$!
  export DISPLAY=":$n"
  local i
  for i in $(seq 50); do xdotool getdisplaygeometry > /dev/null 2>&1 && break; sleep 0.2; done
  trap stop_wine EXIT
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    limit 120 wineboot -i > "$out/wineboot.log" 2>&1 || fail "Wine could not make its prefix in $WINEPREFIX"
  fi
  # One Wine server for every run from here on, rather than one started for
  # each, and its own programs (services, the desktop) started now: they keep
  # the output of the program that starts them open, and a test runner
  # reading it would wait for them. A server that making the prefix left
  # running must end first: a second one refuses to start beside it.
  limit 120 wineserver -w
  wineserver -p
  limit 120 wine wineboot < /dev/null > "$out/wineboot.log" 2>&1 || fail "Wine did not start"
}

stop_wine() {
  [ -n "${WINEPREFIX:-}" ] && wineserver -k 2> /dev/null || true
  [ -n "${xvfb:-}" ] && kill "$xvfb" 2> /dev/null || true
}

# Windows paths of the folders holding Qt's and MinGW's DLLs, for the tests.
runtime_path() {
  local dirs=("$qt/bin" "$(dirname "$(${triple}-g++-posix -print-file-name=libstdc++-6.dll)")"
              "/usr/$triple/lib") d paths=()
  for d in "${dirs[@]}"; do paths+=("Z:${d//\//\\}"); done
  (IFS=';'; echo "${paths[*]}")
}

ctest_under_wine() {
  WINEPATH=$(runtime_path) limit 2400 ctest --test-dir "$out/plotwell" --output-on-failure -j "$jobs" --timeout 600 "$@"
}

# What a test printed in ctest's last run.
test_output() {
  awk -v name="$1" '
    index($0, " Test: ") && substr($0, index($0, " Test: ") + 7) == name { found = 1; next }
    found && /^Output:$/ { getline; on = 1; next }
    on && /^<end of output>$/ { exit }
    on { print }' "$out/plotwell/Testing/Temporary/LastTest.log"
}

# A test that failed is shown with what it printed. One that had reached its
# first check is a fault. Wine once failed to start a test program at all
# (it ended in 0.05 s, faster than any Windows program starts there, after
# passing in hundreds of runs): such tests run once more, and fail only if
# they fail again.
run_tests() {
  say "running every test under Wine"
  local log=$out/ctest.log status=0 failed=$out/plotwell/Testing/Temporary/LastTestsFailed.log
  rm -f "$failed"
  ctest_under_wine > "$log" 2>&1 || status=$?
  grep -E '^[0-9]+% tests passed|tests failed out of|Total Test time' "$log" || true
  if [ $status -ne 0 ]; then
    grep -E '\*\*\*Failed|\*\*\*Timeout|\*\*\*Exception|Not Run' "$log" || true
    local name output ran=()
    grep -q 'tests failed out of' "$log" && [ -s "$failed" ] || fail "the tests did not all run under Wine (log: $log)"
    while IFS=: read -r _ name; do
      output=$(test_output "$name")
      printf '%s printed:\n%s\n' "$name" "$(tail -n 30 <<< "$output")"
      if grep -q '^\[==========\] Running' <<< "$output"; then ran+=("$name"); fi
    done < "$failed"
    [ ${#ran[@]} -eq 0 ] || fail "tests failed under Wine: ${ran[*]} (log: $log)"
    say "Wine did not start $(wc -l < "$failed") test program(s): running them once more"
    ctest_under_wine --rerun-failed >> "$log" 2>&1 || fail "tests failed under Wine twice (log: $log)"
  fi
  elapsed "tests passed under Wine"
}

# ---------------------------------------------------------------------------
# The zip

# The DLLs a program or plugin imports that lie in one of the folders given,
# and theirs in turn; the system's own DLLs are in none of them.
imported_dlls() {
  local file=$1; shift
  local name dir
  for name in $(${triple}-objdump -p "$file" | sed -n 's/^[[:space:]]*DLL Name: //p'); do
    for dir in "$@"; do
      if [ -f "$dir/$name" ]; then
        echo "$dir/$name"
        break
      fi
    done
  done
}

make_zip() {
  local name=plotwell-$version-windows-x64
  local stage=$out/zip/$name
  rm -rf "$out/zip"
  mkdir -p "$stage"/platforms "$stage"/styles "$stage"/imageformats
  cp "$out/plotwell/plotwell.exe" "$out/plotwell/plotwell-map.exe" "$stage/"
  # Notepad shows the readme; older Notepads need carriage returns.
  sed 's/\r$//; s/$/\r/' "$repo/readme.txt" > "$stage/readme.txt"
  cp "$qt/plugins/platforms/qwindows.dll" "$stage/platforms/"
  cp "$qt/plugins/styles/qwindowsvistastyle.dll" "$stage/styles/"
  cp "$qt/plugins/imageformats/"{qjpeg,qgif,qico}.dll "$stage/imageformats/"
  local dirs=("$qt/bin" "$(dirname "$(${triple}-g++-posix -print-file-name=libstdc++-6.dll)")" "/usr/$triple/lib")
  local todo=("$stage"/*.exe "$stage"/*/*.dll) seen=" " dll
  while [ ${#todo[@]} -gt 0 ]; do
    local next=("${todo[0]}")
    todo=("${todo[@]:1}")
    for dll in $(imported_dlls "${next[0]}" "${dirs[@]}"); do
      case "$seen" in *" $(basename "$dll") "*) continue ;; esac
      seen="$seen$(basename "$dll") "
      cp "$dll" "$stage/"
      todo+=("$stage/$(basename "$dll")")
    done
  done
  find "$stage" \( -name '*.exe' -o -name '*.dll' \) -exec ${triple}-strip --strip-unneeded {} +
  local f
  for f in plotwell.exe plotwell-map.exe readme.txt Qt6Core.dll Qt6Gui.dll Qt6Widgets.dll libstdc++-6.dll \
           libgcc_s_seh-1.dll libwinpthread-1.dll platforms/qwindows.dll styles/qwindowsvistastyle.dll \
           imageformats/qjpeg.dll imageformats/qgif.dll imageformats/qico.dll; do
    [ -f "$stage/$f" ] || fail "the zip would lack $f"
  done
  zip="$out/$name.zip"
  rm -f "$zip"
  (cd "$out/zip" && zip -q -9 -r "$zip" "$name")
  say "$zip: $(find "$stage" -type f | wc -l) files, $(du -sm "$stage" | cut -f1) MB unpacked, $(du -k "$zip" | cut -f1) KB"
  unpacked=$stage
}

# ---------------------------------------------------------------------------
# Smoke test of the programs as the zip has them: no DLL from elsewhere.

# A small zone of rooms and corridors with labels, as the game's maps are.
write_zone() {
  awk 'BEGIN {
    printf "L 0,0,0,400,0,0,0,0,0\r\nL 400,0,0,400,300,0,0,0,0\r\nL 400,300,0,0,300,0,0,0,0\r\nL 0,300,0,0,0,0,0,0,0\r\n"
    for (i = 0; i < 8; i++) {
      x = 20 + i * 47
      printf "L %d,20,0,%d,120,0,0,0,%d\r\nL %d,120,0,%d,120,0,0,0,%d\r\n", x, x, 128 + i * 16, x, x + 30, 128 + i * 16
      printf "L %d,180,-10,%d,280,-10,%d,0,0\r\n", x + 15, x + 15, 128 + i * 16
    }
    for (a = 0; a < 36; a++) {
      printf "L %.4f,%.4f,5,%.4f,%.4f,5,0,128,0\r\n", 200 + 60 * cos(a * 0.1745), 150 + 60 * sin(a * 0.1745),
             200 + 60 * cos((a + 1) * 0.1745), 150 + 60 * sin((a + 1) * 0.1745)
    }
    printf "P 200,150,5,0,0,255,3,Fountain_Square\r\nP 40,60,0,128,0,0,2,Bank\r\nP 360,60,0,128,0,0,2,Guild_Hall\r\n"
    printf "P 200,290,-10,0,0,0,2,Zone_to_the_Karana_Plains\r\nP 60,230,-10,0,0,0,1,Merchant\r\n"
  }' > "$1"
}

smoke_test() {
  say "smoke test under Wine"
  local dir=$out/smoke
  rm -rf "$dir"
  mkdir -p "$dir"
  write_zone "$dir/zone.txt"
  printf 'P 10,10,0,255,0,0,1,Lost_and_Found\r\nL 1,2,3\r\n' > "$dir/zone_1.txt"
  # The Linux build answers first.
  local linux=$repo/build/plotwell-map
  if [ -f "$repo/build/CMakeCache.txt" ]; then cmake -S "$repo" -B "$repo/build" > /dev/null
  else cmake -S "$repo" -B "$repo/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF > /dev/null; fi
  nice -n 19 cmake --build "$repo/build" --target plotwell-map > /dev/null
  local command
  for command in check stats; do
    (cd "$dir" && limit 60 "$linux" "$command" zone.txt zone_1.txt > "linux-$command.txt" || true)
    (cd "$dir" && limit 120 wine "$unpacked/plotwell-map.exe" "$command" zone.txt zone_1.txt > "windows-$command.txt" || true)
    cmp "$dir/linux-$command.txt" "$dir/windows-$command.txt" \
      || { diff "$dir/linux-$command.txt" "$dir/windows-$command.txt" || true; fail "plotwell-map.exe $command answers otherwise than on Linux"; }
  done
  # A picture with its labels' text in the system's fonts (a zone alone:
  # render brings a zone's _1 file along, and that one stops at a bad record).
  mkdir "$dir/render"
  cp "$dir/zone.txt" "$dir/render/"
  (cd "$dir/render" && limit 120 wine "$unpacked/plotwell-map.exe" render zone.txt -o zone.png --size 640x480) \
    || fail "plotwell-map.exe render failed"
  [ -s "$dir/render/zone.png" ] || fail "plotwell-map.exe render wrote no picture"

  # The editor opens the zone given on its command line in its window.
  local title="Plotwell v$version" window=""
  (cd "$dir" && exec wine "$unpacked/plotwell.exe" zone.txt > "$dir/plotwell.log" 2>&1) &
  local editor=$!
  window=$(limit 90 xdotool search --sync --onlyvisible --name "^$title\$" | head -n 1) || true
  [ -n "$window" ] || { kill "$editor" 2> /dev/null || true; fail "plotwell.exe showed no window titled \"$title\""; }
  sleep 3 # a few frames
  xwd -root -silent | xwdtopnm 2> /dev/null | pnmtopng > "$out/screenshot.png"
  # A close request ends the editor about two seconds later, normally.
  xdotool key --window "$window" alt+F4 2> /dev/null
  local i
  for i in $(seq 60); do kill -0 "$editor" 2> /dev/null || break; sleep 0.5; done
  if kill -0 "$editor" 2> /dev/null; then
    kill "$editor" 2> /dev/null || true
    fail "plotwell.exe did not end after a close request"
  fi
  wait "$editor" || fail "plotwell.exe ended with status $? after a close request"

  # Help > Readme opens readme.txt in Notepad: Alt enters the menu bar, Help
  # is its last menu and Readme its first entry. Keys go to the focused
  # window, as a user's do (there is no window manager here).
  (cd "$dir" && exec wine "$unpacked/plotwell.exe" > "$dir/plotwell-readme.log" 2>&1) &
  editor=$!
  window=$(limit 90 xdotool search --sync --onlyvisible --name "^$title\$" | head -n 1) || true
  [ -n "$window" ] || { kill "$editor" 2> /dev/null || true; fail "plotwell.exe showed no window the second time"; }
  sleep 2
  xdotool windowfocus --sync "$window" 2> /dev/null || true
  local key
  for key in alt Left Down Return; do xdotool key "$key" 2> /dev/null; sleep 0.5; done
  local notepad
  notepad=$(limit 60 xdotool search --sync --onlyvisible --name "^readme.txt - Notepad\$" | head -n 1) || true
  kill "$editor" 2> /dev/null || true
  wait "$editor" 2> /dev/null || true
  [ -n "$notepad" ] || fail "Help > Readme showed no readme.txt in Notepad"
  say "plotwell.exe showed \"$title\" with zone.txt (screenshot: $out/screenshot.png), Help > Readme opened Notepad"
}

main() {
  install_tools
  qt_version=$(dpkg-query -W -f='${source:Version}' qt6-base-dev)
  mkdir -p "$out"
  build_qt
  build_googletest
  build_plotwell
  start_wine
  run_tests
  make_zip
  smoke_test
  say "done in $((SECONDS - started)) s: $zip"
}

main "$@"
