# The project that the workbench shows: made from compiler output here, or the user's own.

# make_project: build/project, from SQLite's sources and our own; made again when any of them is newer.
make_project() {
    local newer
    if [ -s build/project/session.tsv ]; then
        newer=$(find . -name build -prune -o -name '.?*' -prune -o \( -name '*.cpp' -o -name '*.h' \) \
            -newer build/project/session.tsv -print -quit)
        [ -z "$newer" ] && return 0
    fi
    step "Making a project from what the compiler says about the sources here"
    INCLUDE=$root/build/deps/sqlite quietly build/log/project.log \
        scripts/make_project.sh build/project workbench build/deps/sqlite=sqlite .
}

# open_project FOLDER: sets `project` to a folder that the workbench can write to, as it keeps its log database there.
open_project() {
    local given=$1 name
    if ! [ -f "$given/session.tsv" ]; then say "No project in $given: session.tsv is missing"; return 1; fi
    name=$(basename "$(readlink -f "$given")")
    case $(readlink -f "$given") in
        "$root"/build/project) ;;
        *) if writable "$given"; then
               project=$(readlink -f "$given")
               say "    Project: $project (the log database is kept there)"
               return 0
           fi ;;
    esac
    project=$root/build/run/$name
    rm -rf "$project"
    mkdir -p "$project"
    cp -r "$given"/. "$project/"
    chmod -R u+w "$project"
    say "    Project: $project (a copy of $given)"
}

# The permission bits count for root too: a folder marked read-only is left alone.
writable() { [ -w "$1" ] && [[ $(stat -Lc %A "$1") == *w* ]]; }
