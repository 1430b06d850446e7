# Turns the list of sources and the compiler's diagnostics into the project's tables. Variables: out (the project's
# folder), work (its diagnostics/ holds what the compiler said), project (the name).

BEGIN {
    FS = OFS = "\t"
    objects = out "/objects.tsv"
    session = out "/session.tsv"
    print "Key", "Value" > (out "/host.tsv")
    print "ProjectName", project > (out "/host.tsv")
    print "ProductName", "Workbench" > (out "/host.tsv")
    print "WorkbenchName", "Workbench" > (out "/host.tsv")
    print "CompositeMask", 12 > (out "/host.tsv")
    print "ID", "KeyName", "DisplayName", "IconFile", "Flags", "KeyProperty" > (out "/entities.tsv")
    print 1, "SOURCE", "Source", "source.png", 1, "Name" > (out "/entities.tsv")
    print 2, "HEADER", "Header", "header.png", 2, "Name" > (out "/entities.tsv")
    print 4, "FOLDER", "Folder", "folder.png", 4, "Name" > (out "/entities.tsv")
    print 8, "PROJECT", "Project", "project.png", 8, "Name" > (out "/entities.tsv")
    print "ID", "DisplayName", "AliasID" > (out "/methods.tsv")
    print "verify", "Verify", "" > (out "/methods.tsv")
    print "check", "", "verify" > (out "/methods.tsv")
    print "build", "Build", "" > (out "/methods.tsv")
    print "ID", "EntityKey", "Name", "DisplayName" > objects
    print "P1", "PROJECT", project, project > objects
    print "Command", "MethodID", "ReturnCode", "ObjectID", "Message", "ErrorsFileName" > session
}

{
    id = "O" NR
    names[NR] = $3
    ids[$3] = id
    prefixes[NR] = substr($3, 1, length($3) - length($2))
    print id, kind($3) == "Header" ? "HEADER" : "SOURCE", $3, basename($3) > objects
}

END {
    for (i = 1; i <= NR; ++i) if (names[i] !~ /\.h$/) replay(i)
    if (group != "") print "SeriesFinish", worst > session
    print "Add", "build", 0, "P1", "checked " sources " sources", "" > session
    print "Code", "Text" > (out "/codes.tsv")
    close(out "/codes.tsv")
    for (code in texts) print code, texts[code] | ("sort >> '" out "/codes.tsv'")
}

# One Add; sources of one top folder make one series.
function replay(i,    file, code, message) {
    if (top(names[i]) != group) {
        if (group != "") print "SeriesFinish", worst > session
        group = top(names[i])
        worst = 0
        print "SeriesStart", "verify" > session
    }
    ++sources
    file = names[i]
    gsub(/[\/.]/, "_", file)
    convert(work "/diagnostics/" file, out "/" file ".errors", prefixes[i])
    code = errors ? 2 : warnings ? 1 : 0
    if (code > worst) worst = code
    message = code ? errors " errors, " warnings " warnings" : ""
    print "Add", "verify", code, ids[names[i]], message, written ? file ".errors" : "" > session
}

# The compiler's lines as an errors file; counts errors, warnings and lines written.
function convert(from, to, prefix,    line, at, severity, text, class) {
    errors = warnings = written = 0
    while ((getline line < from) > 0) {
        if (!match(line, /: (fatal error|error|warning|note): /)) continue
        at = substr(line, 1, RSTART - 1)
        severity = substr(line, RSTART + 2, RLENGTH - 4)
        text = substr(line, RSTART + RLENGTH)
        split_place(at)
        if (!(prefix place_file in ids)) continue
        class = severity
        if (severity == "warning" && match(text, / \[-W[^\]]*\]$/)) {
            class = substr(text, RSTART + 2, RLENGTH - 3)
            text = substr(text, 1, RSTART - 1)
        }
        if (severity ~ /error/) ++errors
        if (severity == "warning") ++warnings
        gsub(/"/, "'", text)
        printf "\"%s\" \"%s\" \"%s\" \"%s\" \"%s\" \"%s\" %s\r\n", kind(place_file), prefix place_file, place_row,
            place_column, label(severity), code_of(severity, class), text > to
        ++written
    }
    close(from)
    if (written) close(to)
}

# "file:row:column" or "file:row"; -1 stands for a column that the compiler does not know.
function split_place(at,    parts, n) {
    n = split(at, parts, ":")
    place_file = parts[1]
    place_row = n > 1 ? parts[2] : -1
    place_column = n > 2 ? parts[3] : -1
    sub(/^\.\//, "", place_file)
}

function code_of(severity, class,    code) {
    if (!(class in codes)) {
        codes[class] = code = letter(severity) (1001 + known++)
        texts[code] = class
    }
    return codes[class]
}

function label(severity) { return severity ~ /error/ ? "Error" : severity == "warning" ? "Warning" : "Note" }
function letter(severity) { return severity ~ /error/ ? "E" : severity == "warning" ? "W" : "I" }
function kind(name) { return name ~ /\.h$/ ? "Header" : "Source" }
function basename(name) { sub(/.*\//, "", name); return name }
function top(name,    n, parts) { n = split(name, parts, "/"); return n > 1 ? parts[1] : "." }
