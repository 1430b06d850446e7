# Configure and build one preset.

# build PRESET [CMAKE OPTION...]
build() {
    local preset=$1
    shift
    step "Building $preset"
    quietly "build/log/$preset-configure.log" cmake --preset "$preset" "$@" &&
        quietly "build/log/$preset-build.log" cmake --build --preset "$preset"
}

# build_products PRESET [CMAKE OPTION...]: what is delivered, without what tests it.
build_products() {
    local preset=$1
    shift
    step "Building $preset"
    quietly "build/log/$preset-configure.log" cmake --preset "$preset" "$@" &&
        quietly "build/log/$preset-build.log" cmake --build --preset "$preset" -t CVLog3 workbench TLReport
}

need_amalgamation() {
    local file
    for file in sqlite3.c sqlite3.h shell.c; do
        if ! [ -s "build/deps/sqlite/$file" ]; then
            step "Making SQLite's amalgamation"
            quietly build/log/sqlite.log scripts/make_amalgamation.sh build/deps/sqlite
            return
        fi
    done
}

# Everything that a Windows preset needs before cmake; false with the reason in need_problem.
need_windows() {
    need "${native_packages[@]}" "${windows_packages[@]}" || return 1
    need_amalgamation || { need_problem="SQLite's source package could not be had"; return 1; }
    need_locales || { need_problem="the locales ja_JP.UTF-8 and ko_KR.UTF-8 could not be made"; return 1; }
}
