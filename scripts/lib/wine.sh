# A Wine prefix and a display of the build's own.

export WINEPREFIX=$root/build/wine WINEDEBUG=-all WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="

has_wine32() { [ -e /usr/lib/wine/wine ] || [ -e /usr/lib/i386-linux-gnu/wine ]; }

# display_start [own [SIZE]]: the user's own, unless `own` is asked for, else a virtual one that ends with this script.
display_start() {
    [ "${1:-}" != own ] && [ -n "${DISPLAY:-}" ] && return 0
    local number_file=$root/build/display pid
    mkdir -p build/log
    rm -f "$number_file"
    Xvfb -displayfd 3 -screen 0 "${2:-1280x1024}x24" -nolisten tcp 3>"$number_file" >build/log/xvfb.log 2>&1 </dev/null &
    pid=$!
    at_end kill "$pid"
    for _ in $(seq 100); do
        [ -s "$number_file" ] && break
        kill -0 "$pid" 2>/dev/null || break
        sleep 0.1
    done
    [ -s "$number_file" ] || { say "No display: Xvfb did not start (build/log/xvfb.log)"; return 1; }
    DISPLAY=:$(tr -d '[:space:]' <"$number_file")
    export DISPLAY
}

# wine_start [PREFIX COMMAND...]: the prefix, made once, with its server staying up until the end. The command words
# go before wineserver (taskset for benchmarks).
wine_start() {
    local stamp=$WINEPREFIX/.cvlog-ready
    if ! [ -e "$stamp" ]; then
        step "Making the Wine prefix"
        wine_stop
        rm -rf "$WINEPREFIX"
        mkdir -p "$WINEPREFIX"
        quietly build/log/wineboot.log timeout 180 wineboot --init || return 1
        quietly build/log/wine-settings.log wine_settings || return 1
        wineserver -w
        touch "$stamp"
    fi
    "$@" wineserver -p </dev/null >/dev/null 2>&1 || true
    at_end wine_stop
    quietly build/log/wineboot.log timeout 180 wineboot
}

wine_stop() {
    [ -d "$WINEPREFIX" ] && command -v wineserver >/dev/null || return 0
    wineserver -k >/dev/null 2>&1 || true
}

# desktop_keep PRESET: programs that come and go find the desktop up, until the end. It has to be there before any of
# them: the one that brings it up lends it its output, which then never ends.
desktop_keep() {
    local log=build/log/desktop-keeper.log
    rm -f "$log"
    wine "build/$1/bin/desktop_keeper.exe" </dev/null >"$log" 2>&1 &
    at_end kill $!
    wait_for_file "$log" $! 60 || say "    No desktop is kept ($log)"
}

# A new desktop, on the display that is in force now.
wine_restart() {
    wine_stop
    wineserver -w
    wineserver -p </dev/null >/dev/null 2>&1 || true
}

wine_settings() {
    local fonts
    wine_setting 'HKCU\Software\Wine\X11 Driver' Managed REG_SZ N
    wine_setting 'HKCU\Software\Wine\WineDbg' ShowCrashDialog REG_DWORD 0
    wine_setting 'HKCU\Software\Wine\Fonts\Replacements' 'MS UI Gothic' REG_SZ 'WenQuanYi Micro Hei'
    wine_setting 'HKCU\Software\Wine\Fonts\Replacements' Gulim REG_SZ 'WenQuanYi Micro Hei'
    fonts=$WINEPREFIX/drive_c/windows/Fonts
    mkdir -p "$fonts"
    [ -d /usr/share/wine/fonts ] && cp -n /usr/share/wine/fonts/* "$fonts/"
    return 0
}
wine_setting() { timeout 60 wine reg add "$1" /v "$2" /t "$3" /d "$4" /f; }

# The Windows path of a file or folder here.
windows_path() { printf 'Z:%s' "$(readlink -m "$1" | tr / '\\')"; }
