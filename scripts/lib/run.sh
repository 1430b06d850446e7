# The workbench on a project: on the user's display, else on a virtual one, leaving a screenshot.

dev_run() {
    local given=${1:-} project
    [ -n "$given" ] && given=$(cd "$cd_from" && readlink -m "$given")
    need_windows || fail "The workbench cannot be built: $need_problem"
    build windows-x64 || fail "The workbench was not built"
    [ -e build/windows-x64/bin/workbench.exe ] || fail "The workbench was not built: it has no sources here"
    if [ -z "$given" ]; then
        make_project || fail "The project was not made"
        given=$root/build/project
    fi
    open_project "$given" || exit 1
    if [ -n "${DISPLAY:-}" ]; then run_shown; else run_virtual; fi
}

# The window stays until the user closes it.
run_shown() {
    wine_start || fail "Wine does not start (build/log/wineboot.log)"
    workbench_managed Y
    step "Starting the workbench on $DISPLAY; close its window to end"
    wine build/windows-x64/bin/workbench.exe "$(windows_path "$project")" </dev/null >build/log/workbench.log 2>&1 ||
        fail "The workbench ended with code $? (build/log/workbench.log)"
    closing_line
}

run_virtual() {
    local name
    name=$(basename "$project")
    display_start || fail "No display to show the workbench on"
    wine_start || fail "Wine does not start (build/log/wineboot.log)"
    workbench_managed N
    mkdir -p build/run build/screenshots
    rm -f build/screenshots/"$name".png build/screenshots/"$name"-*.png
    step "Starting the workbench on a virtual display"
    picture_session /pictures "$project" "$name"
    cp build/log/workbench.log build/log/workbench-session.log
    picture_tour "$name"
    picture_resolution "$name" 192
    picture_language "$name" ja_JP
    picture_language "$name" ko_KR
    cp build/log/workbench-session.log build/log/workbench.log
    closing_line
}

# Everything that opens or changes, on a copy of the project: the tour adds entries and clears the log.
picture_tour() {
    step "Taking a tour of the log"
    copy_project
    picture_session /tour "$root/build/run/tour" "$1"
    picture_report build/run/tour/Output/Log.html "build/screenshots/$1-report.png"
}

# A few pictures at another resolution, on a display that has room for it.
picture_resolution() {
    local before=$DISPLAY
    step "Starting the workbench at $2 dots an inch"
    display_start own 2560x2048 || fail "No display to show the workbench on"
    at_end resolution 96 # whatever happens: tests use the same prefix
    resolution "$2"
    wine_restart
    copy_project
    picture_session /glance "$root/build/run/tour" "$1-$2dpi"
    resolution 96
    DISPLAY=$before
    wine_restart
}

picture_language() {
    step "Starting the workbench in the language of $2"
    copy_project
    LC_ALL=$2.UTF-8 picture_session /glance "$root/build/run/tour" "$1-${2%_*}"
}

copy_project() {
    rm -rf build/run/tour
    cp -r "$project" build/run/tour
    chmod -R u+w build/run/tour
}

resolution() {
    quietly build/log/wine-settings.log wine_setting 'HKCU\Control Panel\Desktop' LogPixels REG_DWORD "$1"
}

# picture_session MODE PROJECT NAME: pictures build/screenshots/NAME.png, NAME-*.png.
picture_session() {
    local ready=$root/build/run/ready.txt pid
    rm -f "$ready"
    wine build/windows-x64/bin/workbench.exe "$1" "$(windows_path "$ready")" "$(windows_path "$2")" \
        </dev/null >build/log/workbench.log 2>&1 &
    pid=$!
    at_end kill "$pid"
    wait_for_file "$ready" "$pid" 300 ||
        fail "The workbench did not become ready: $(tail -n 3 build/log/workbench.log | tr -d '\r')"
    take_pictures "$ready" "$pid" "build/screenshots/$3"
    wait_for_end "$pid" 30 || fail "The workbench did not end"
    wait "$pid" || fail "The workbench ended with code $? (build/log/workbench.log)"
    tr -d '\r' <build/log/workbench.log | sed -n 's/^No picture/    &/p'
}

# take_pictures READY PID NAME: one each time that the workbench asks with a line in READY. The first, of the replayed
# session, is NAME.png; for the others the line has the rest of the name. The dark rest of the screen is cut off.
take_pictures() {
    local ready=$1 pid=$2 picture=$3.png
    while :; do
        /usr/bin/import -window root "$picture"
        /usr/bin/mogrify -bordercolor black -border 1 -trim +repage "$picture"
        [ "$(/usr/bin/identify -format %k "$picture")" -gt 2 ] || fail "Nothing is shown: $picture"
        say "    Screenshot: $picture"
        rm -f "$ready"
        wait_for_file "$ready" "$pid" 60 || return 0
        picture=$3-$(tr -d '\r\n' <"$ready").png
    done
}

# picture_report PAGE PICTURE: as it is printed, where there is a program that can draw it.
picture_report() {
    [ -s "$1" ] || fail "There is no report in $1"
    if ! command -v weasyprint >/dev/null || ! command -v pdftoppm >/dev/null; then
        say "    No picture of the report, build/run/tour/Output/Log.html: weasyprint and pdftoppm would make one"
        return 0
    fi
    weasyprint -q "$1" build/run/report.pdf 2>/dev/null || fail "The report cannot be drawn"
    pdftoppm -r 90 -f 1 -l 1 -singlefile -png build/run/report.pdf "${2%.png}"
    say "    Screenshot: $2"
}

# A window manager is there on a user's display and not on a virtual one.
workbench_managed() {
    quietly build/log/wine-settings.log \
        wine_setting 'HKCU\Software\Wine\AppDefaults\workbench.exe\X11 Driver' Managed REG_SZ "$1"
}

# wait_for_file FILE PID SECONDS: until the file has content; false when the process ends first or time is up.
wait_for_file() {
    local _
    for _ in $(seq $(($3 * 20))); do
        [ -s "$1" ] && return 0
        kill -0 "$2" 2>/dev/null || return 1
        sleep 0.05
    done
    return 1
}

wait_for_end() {
    local _
    for _ in $(seq $(($2 * 20))); do
        kill -0 "$1" 2>/dev/null || return 0
        sleep 0.05
    done
    return 1
}

closing_line() {
    local line
    line=$(tr -d '\r' <build/log/workbench.log | grep . | tail -n 1) || fail "The workbench said nothing"
    say "$line"
}
