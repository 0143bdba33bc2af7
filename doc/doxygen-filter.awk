# Reads a public header the way its developers write it and hands Doxygen the same text with
# the comments made documentation, line for line (the line numbers stay):
#   - the comment lines at the top of a file describe the file;
#   - a "//" comment line becomes "///", a trailing "// ..." after code becomes "///< ...";
#   - a comment above a run of declarations (no blank line between them) documents every
#     declaration of the run: the run is wrapped in a member group whose documentation
#     Doxygen hands to each member (DISTRIBUTE_GROUP_DOC).
# Usage: awk -f doxygen-filter.awk FILE

function trim(s) {
    sub(/^[ \t]+/, "", s)
    sub(/[ \t]+$/, "", s)
    return s
}

function is_comment(s) { return substr(trim(s), 1, 2) == "//" }

# The line with "//" made "///"; documentation comments already written so stay.
function doc_comment(s,    indent) {
    if (match(s, /^[ \t]*\/\/[\/!]/))
        return s
    match(s, /^[ \t]*/)
    indent = substr(s, 1, RLENGTH)
    return indent "///" substr(s, RLENGTH + 3)
}

# A code line whose trailing comment documents it.
function doc_code(s,    at, code) {
    at = index(s, "//")
    if (at == 0)
        return s
    code = substr(s, 1, at - 1)
    if (index(code, "\"") > 0 || index(code, "'") > 0 || substr(s, at, 3) == "///")
        return s
    return code "///<" substr(s, at + 2)
}

# The change of brace depth a code line makes (texts in quotes are not counted).
function brace_change(s,    n, i, c, quote) {
    n = 0
    quote = ""
    for (i = 1; i <= length(s); i++) {
        c = substr(s, i, 1)
        if (quote != "") {
            if (c == "\\")
                i++
            else if (c == quote)
                quote = ""
        } else if (c == "\"" || c == "'") {
            quote = c
        } else if (c == "/" && substr(s, i + 1, 1) == "/") {
            break
        } else if (c == "{") {
            n++
        } else if (c == "}") {
            n--
        }
    }
    return n
}

function ends_statement(s,    t) {
    t = s
    sub(/[ \t]*\/\/.*$/, "", t)
    t = trim(t)
    return t ~ /[;}]$/
}

function ends_run(s,    t) {
    t = trim(s)
    return t == "" || substr(t, 1, 2) == "//" || substr(t, 1, 1) == "#" ||
           t ~ /^(public|protected|private)[ \t]*:/
}

# Writes the buffered comment and run; a run of two or more whole declarations becomes a
# member group.
function flush(    i, group, out, indent, text, last) {
    # A destructor that ends the run stays out of the group: it needs no words of its own,
    # and the comment describes what comes before it.
    last = count
    if (count > commentLines + 1 && trim(buffer[count]) ~ /^(virtual[ \t]+)?~/ &&
        ends_statement(buffer[count]) && ends_statement(buffer[count - 1])) {
        last = count - 1
        statements--
    }
    group = (count > commentLines && depth == 0 && statements >= 2 && lastEnds)
    for (i = 1; i <= count; i++) {
        out = buffer[i]
        if (i <= commentLines && !group) {
            out = doc_comment(out)
        } else if (i <= commentLines) {
            # The group opens on the comment's first line, so the comment becomes one C-style
            # block after the marker (a "///" comment after it would lose its later lines).
            match(out, /^[ \t]*/)
            indent = substr(out, 1, RLENGTH)
            text = substr(out, RLENGTH + 3)
            gsub(/\*\//, "* /", text)
            out = indent (i == 1 ? "/**@{*/ /**" : "   ") text (i == commentLines ? " */" : "")
        } else {
            out = doc_code(out)
            if (group && i == last)
                out = out " /**@}*/"
        }
        print out
    }
    count = 0
    commentLines = 0
    statements = 0
    depth = 0
    lastEnds = 0
}

BEGIN {
    count = 0
    header = 1
    name = ARGV[1]
    sub(/^.*\//, "", name)
}

{
    line = $0
    if (header) {
        if (is_comment(line)) {
            if (header == 1)
                print "/// @file " name " " substr(trim(line), 3)
            else
                print doc_comment(line)
            header = 2
            next
        }
        header = 0
    }

    if (count > 0 && count > commentLines) {
        # In a run of declarations after a comment.
        change = brace_change(line)
        if (ends_run(line) || depth + change < 0) {
            flush()
        } else {
            buffer[++count] = line
            depth += change
            lastEnds = 0
            if (depth == 0 && ends_statement(line)) {
                statements++
                lastEnds = 1
            }
            next
        }
    }

    if (is_comment(line)) {
        if (count > commentLines)
            flush()
        buffer[++count] = line
        commentLines = count
        next
    }
    if (count > 0) {
        if (trim(line) == "" || substr(trim(line), 1, 1) == "#") {
            flush()
        } else {
            change = brace_change(line)
            buffer[++count] = line
            depth = change
            if (depth == 0 && ends_statement(line)) {
                statements++
                lastEnds = 1
            }
            next
        }
    }
    print doc_code(line)
}

END {
    if (count > 0)
        flush()
}
