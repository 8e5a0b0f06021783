#!/bin/sh
# Runs a Windows test program under Wine, as the tests' emulator. Wine passes
# no QT_ variable on to a Windows program, but passes on a WINE-prefixed one
# without its prefix: the Qt variables a test sets are handed over so. Qt's
# offscreen platform finds no fonts on Windows unless it is given a folder of
# them (text would be boxes): it is given the host's.
fonts=${PLOTWELL_WINE_FONTS:-/usr/share/fonts/truetype/dejavu}
[ -n "${QT_QPA_FONTDIR:-}" ] || QT_QPA_FONTDIR=$(printf 'Z:%s' "$fonts" | tr '/' '\\')
[ -z "${QT_QPA_PLATFORM:-}" ] || export WINEQT_QPA_PLATFORM="$QT_QPA_PLATFORM"
export WINEQT_QPA_FONTDIR="$QT_QPA_FONTDIR"
exec wine "$@"
