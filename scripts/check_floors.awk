# Reads the list of source files; see check_floors.sh for the rules' names.

function words(list, set, value,    parts, n, i) {
    n = split(list, parts, " ")
    for (i = 1; i <= n; ++i) set[parts[i]] = value
}

# allow FOLDERS to include THESE besides itself
function allow(folders, these,    parts, n, i, others, m, j) {
    n = split(folders, parts, " ")
    m = split(these, others, " ")
    for (i = 1; i <= n; ++i) {
        known[parts[i]] = allowed[parts[i], parts[i]] = 1
        for (j = 1; j <= m; ++j) allowed[parts[i], others[j]] = 1
    }
}

BEGIN {
    rooms = "core store view details host"
    floors = "hostapi widgets ports automation base"
    allow("base", "")
    allow("automation", "base")
    allow("ports", "automation base")
    allow("widgets", "ports automation base")
    allow("hostapi", "ports automation base")
    allow("resources", "base")
    allow(rooms, rooms " resources " floors)
    allow("platform/win32 platform/headless", "resources ports widgets automation base")
    allow("com", rooms " resources " floors " platform/win32 platform/headless")
    allow("workbench docs", "")
    allow("tests tests/posix bench", rooms " resources " floors " platform/headless tests tests/posix bench")
    allow("bench/posix", "bench")
    allow("tests/windows bench/windows", rooms " resources " floors " platform/win32 platform/headless com tests bench")

    # tests/posix needs processes that are killed and users without rights, bench/posix to give memory back.
    words("platform/win32 com workbench docs tests/windows tests/posix bench/windows bench/posix", os_folder, 1)
    words("store tests tests/posix bench", sqlite_folder, 1)

    words("algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes " \
          "climits clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg " \
          "cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem " \
          "forward_list fstream functional future initializer_list iomanip ios iosfwd iostream istream iterator latch " \
          "limits list locale map memory memory_resource mutex new numbers numeric optional ostream queue random " \
          "ranges ratio regex scoped_allocator semaphore set shared_mutex source_location span sstream stack stdexcept " \
          "stop_token streambuf string string_view strstream syncstream system_error thread tuple type_traits " \
          "typeindex typeinfo unordered_map unordered_set utility valarray variant vector version", standard, 1)
    words("assert.h ctype.h errno.h fenv.h float.h inttypes.h limits.h locale.h math.h setjmp.h signal.h stdarg.h " \
          "stdbool.h stddef.h stdint.h stdio.h stdlib.h string.h time.h uchar.h wchar.h wctype.h", standard, 1)
}

{ files[++count] = $0; exists[$0] = 1 }

END {
    for (i = 1; i <= count; ++i) read(files[i])
    for (i = 1; i <= count; ++i) if (files[i] ~ /\.h$/) walk(files[i])
    if (breaches) { printf "%d breaches of the floors in %d files\n", breaches, count; exit 1 }
    printf "The floors hold: %d files\n", count
}

function breach(where, rule, text) {
    printf "%s: %s: %s\n", where, rule, text
    ++breaches
}

# The folder that the rules speak of: one level, or two below platform/ and for the tests of one system.
function folder_of(file,    parts, n) {
    n = split(file, parts, "/")
    if (n > 2 && (parts[1] == "platform" || parts[2] == "windows" || parts[2] == "posix")) return parts[1] "/" parts[2]
    return n > 1 ? parts[1] : "."
}

function read(file,    line, row, folder, name) {
    folder = folder_of(file)
    if (!(folder in known)) { breach(file, "floor", "no floor is laid down for " folder "/"); return }
    row = 0
    while ((getline line < file) > 0) {
        ++row
        if (line ~ /^[ \t]*#[ \t]*include[ \t]*"/) {
            name = line
            sub(/^[^"]*"/, "", name); sub(/".*/, "", name)
            check_own(file, file ":" row, folder, name)
        } else if (line ~ /^[ \t]*#[ \t]*include[ \t]*</) {
            name = line
            sub(/^[^<]*</, "", name); sub(/>.*/, "", name)
            check_foreign(file ":" row, folder, name)
        } else if (line ~ /^[ \t]*#[ \t]*(if|ifdef|ifndef|elif)[ \t(!]/ && !(folder in os_folder) && line ~ platform_macros)
            breach(file ":" row, "platform", "portable code knows no platform")
    }
    close(file)
}

BEGIN { platform_macros = "_WIN32|_WIN64|WIN32|_MSC_VER|__MINGW|__linux|__unix|__APPLE__|__CYGWIN__" }

function check_own(file, where, folder, name,    target) {
    if (!(name in exists)) { breach(where, "path", "\"" name "\" is no file, seen from the root"); return }
    target = folder_of(name)
    if (!((folder, target) in allowed)) breach(where, "floor", folder "/ may not include " target "/")
    edges[file, ++degree[file]] = name
}

function check_foreign(where, folder, name) {
    if (name in standard || folder in os_folder) return
    if (name == "sqlite3.h" && folder in sqlite_folder) return
    if (name ~ /^gtest\// && folder ~ /^tests/) return
    breach(where, "os", "<" name "> in " folder "/")
}

# Depth first; a header met while it is still open closes a ring. state: 1 open, 2 done.
function walk(file,    i, next_file) {
    if (state[file] == 2) return
    state[file] = 1
    path[++depth] = file
    for (i = 1; i <= degree[file]; ++i) {
        next_file = edges[file, i]
        if (next_file !~ /\.h$/) continue
        if (state[next_file] == 1) breach(file, "cycle", ring(next_file))
        else walk(next_file)
    }
    --depth
    state[file] = 2
}

function ring(start,    i, text) {
    for (i = depth; i > 1 && path[i] != start; --i) {}
    for (; i <= depth; ++i) text = text path[i] " -> "
    return text start
}
