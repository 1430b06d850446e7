#!/usr/bin/env bash
# make_amalgamation.sh FOLDER: SQLite's amalgamation (sqlite3.c, sqlite3.h, shell.c) from the distribution's own source
# package, so in the version of the native library. Needs dpkg-dev, make, tcl and a C compiler.
set -euo pipefail

out=${1:?usage: make_amalgamation.sh FOLDER}
mkdir -p "$out"
out=$(cd "$out" && pwd)
[ -s "$out/sqlite3.c" ] && [ -s "$out/sqlite3.h" ] && [ -s "$out/shell.c" ] && exit 0

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
chmod 755 "$work"

# The machine's own package sources, asked for source packages: in either of the two formats apt knows. The machine's
# own configuration stays as it is.
source_list() {
    local file
    shopt -s nullglob
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        [ -f "$file" ] && sed -nE 's/^[[:space:]]*deb[[:space:]]/deb-src /p' "$file"
    done
    for file in /etc/apt/sources.list.d/*.sources; do
        awk '
            function flush(    i, j, n, m, u, s) {
                n = split(uris, u, " "); m = split(suites, s, " ")
                if (enabled) for (i = 1; i <= n; i++) for (j = 1; j <= m; j++)
                    print "deb-src" (signed == "" ? "" : " [signed-by=" signed "]"), u[i], s[j], components
                uris = suites = components = signed = ""; enabled = 1
            }
            BEGIN { enabled = 1 }
            /^#/ { next }
            /^[[:space:]]*$/ { flush(); next }
            { name = tolower($1); value = $0; sub(/^[^:]*:[[:space:]]*/, "", value) }
            name == "uris:" { uris = value }
            name == "suites:" { suites = value }
            name == "components:" { components = value }
            name == "signed-by:" { signed = value }
            name == "enabled:" && tolower(value) == "no" { enabled = 0 }
            END { flush() }' "$file"
    done
    return 0
}

# Only the distribution's own archives carry the package; others on the machine may not serve sources at all.
source_list | grep -E '/debian(-security)?/?[[:space:]]' > "$work/sources.list" ||
    source_list > "$work/sources.list"
mkdir -p "$work/lists/partial" "$work/cache/archives/partial"
own=(-o "Dir::Etc::SourceList=$work/sources.list" -o Dir::Etc::SourceParts=- -o "Dir::State::Lists=$work/lists"
     -o "Dir::Cache=$work/cache" -o APT::Sandbox::User=root)

cd "$work"
apt-get "${own[@]}" -qq update
version=$(dpkg-query -W -f '${source:Version}' libsqlite3-dev 2>/dev/null || true)
apt-get "${own[@]}" -qq source "sqlite3${version:+=$version}" >/dev/null ||
    apt-get "${own[@]}" -qq source sqlite3 >/dev/null

cd sqlite3-*/
./configure >/dev/null
make sqlite3.c shell.c >/dev/null
cp sqlite3.c sqlite3.h shell.c "$out/"
