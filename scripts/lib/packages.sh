# What each half needs, by Debian package name.

native_packages=(g++ cmake make libgtest-dev libsqlite3-dev sqlite3)
windows_packages=(
    g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools libwine-dev googletest
    wine wine64 xvfb xdotool imagemagick fonts-wine fonts-wqy-microhei locales
    librsvg2-bin icoutils dpkg-dev tcl)
lint_packages=(git clang-format clang-tidy)

missing_packages() {
    local package
    for package in "$@"; do
        [[ $(dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null) == ii* ]] || printf '%s\n' "$package"
    done
}

as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo -n "$@" 2>/dev/null || sudo "$@"; fi; }
apt() { as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq "$@"; }

# need PACKAGE...: install those that are missing; false when that is impossible, with the reason in need_problem.
need() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} = 0 ] && return 0
    need_problem="not installed: ${missing[*]}"
    command -v apt-get >/dev/null || return 1
    [ "$(id -u)" = 0 ] || command -v sudo >/dev/null || return 1
    say "Installing: ${missing[*]}"
    # Package lists may be absent or old: ask for new ones when the first attempt fails.
    quietly build/log/apt.log apt install -y --no-install-recommends "${missing[@]}" >/dev/null && return 0
    quietly build/log/apt-update.log apt update || true
    quietly build/log/apt.log apt install -y --no-install-recommends "${missing[@]}"
}

# The languages whose wording and code pages are tested.
need_locales() {
    local name have
    have=$(locale -a 2>/dev/null)
    for name in ja_JP ko_KR; do
        grep -qix "$name.utf-\?8" <<<"$have" && continue
        say "Installing: locale $name.UTF-8"
        as_root localedef -i "$name" -f UTF-8 "$name.UTF-8" || return 1
    done
}
