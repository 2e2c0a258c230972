# Sourced by the scripts that run Windows programs: WINE and WINESERVER, as
# given or Debian's 64-bit Wine.
WINE=${WINE:-/usr/lib/wine/wine64}
[ -x "$WINE" ] || WINE=$(command -v wine64 || command -v wine)
WINESERVER=${WINESERVER:-$(dirname "$WINE")/wineserver64}
[ -x "$WINESERVER" ] || WINESERVER=$(command -v wineserver)
