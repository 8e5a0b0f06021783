#!/usr/bin/env bash
# Builds the Debian package plotwell_<version>_amd64.deb in build/ with CPack
# and checks it: lists what it holds and what it depends on, validates its
# desktop entry and AppStream description, unpacks it into a temporary root
# with dpkg -x and runs both programs from there, with no display. Installs
# what it needs when missing, like scripts/install-deps.sh.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/install-deps.sh package
# build/ as ./run.sh and ./test.sh leave it, or a new Release build there.
if [ -f build/CMakeCache.txt ]; then
  cmake -S . -B build >/dev/null
else
  cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF >/dev/null
fi
cmake --build build --target plotwell plotwell-map
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/CMakeCache.txt)
deb="build/plotwell_${version}_$(dpkg --print-architecture).deb"
rm -f "$deb"
(cd build && cpack -G DEB >/dev/null)
[ -f "$deb" ] || { echo "package.sh: $deb was not made" >&2; exit 1; }

echo "== $deb"
dpkg-deb --field "$deb" Package Version Architecture Depends Recommends
echo "== contents"
dpkg-deb --contents "$deb" | awk '{print $6}'
for f in ./usr/bin/plotwell ./usr/bin/plotwell-map ./usr/share/applications/plotwell.desktop \
         ./usr/share/icons/hicolor/scalable/apps/plotwell.svg ./usr/share/doc/plotwell/readme.txt \
         ./usr/share/metainfo/org.plotwell.plotwell.metainfo.xml; do
  dpkg-deb --contents "$deb" | awk '{print $6}' | grep -qx "$f" || { echo "package.sh: $f is missing" >&2; exit 1; }
done

root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
dpkg -x "$deb" "$root"
echo "== checks of the unpacked package in $root"
desktop-file-validate "$root/usr/share/applications/plotwell.desktop"
appstreamcli validate --no-net "$root/usr/share/metainfo/org.plotwell.plotwell.metainfo.xml"
export QT_QPA_PLATFORM=offscreen
"$root/usr/bin/plotwell" --version
"$root/usr/bin/plotwell-map" --help | head -n 3
printf 'L 0,0,0,100,50,0,0,0,255\r\nP 10,10,0,255,0,0,1,Camp\r\n' > "$root/zone.txt"
"$root/usr/bin/plotwell-map" render "$root/zone.txt" -o "$root/zone.svg" --size 320x200
grep -q '>Camp</text>' "$root/zone.svg" || { echo "package.sh: the unpacked plotwell-map drew no label" >&2; exit 1; }
echo "package.sh: $deb is complete and its programs run"
