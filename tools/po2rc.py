#!/usr/bin/python3
"""Turns a gettext PO file of the driver's texts into what a resource library is compiled from.

That is a resource script with one STRINGTABLE, and a header with a macro of each text for the dialog
templates: they hold the same captions that the pages load by number, so that a control has its name
from the start. An entry's msgctxt is the string id of the resource library, its msgid the English text and its
msgstr the text of the language. The tool refuses what a resource library can't hold: an id that is
no number or comes twice, an entry without text, or a text whose placeholders differ from those of
the English one.
"""

import argparse
import re
import sys

import polib

PLACEHOLDER = re.compile(r"%(?:[0-9.]*[a-zA-Z]|!)")
MAX_STRING_ID = 0xFFFF
MAX_STRING_UNITS = 0xFFFF  # a resource string's length word

HEADER = """\
// Made by po2rc.py from {source}; edit that file, not this one.
// The table is language-neutral on purpose: the library is the language. A user may choose another
// library than the system's language would, and then every text must still be found in it.
LANGUAGE 0, 0
STRINGTABLE
BEGIN
"""

CAPTIONS_HEADER = """\
// Made by po2rc.py from {source}; edit that file, not this one.
// TEXT_<id> is the text of that string id. LAYOUT_STYLE is the extended window style that lays a
// dialog out in the direction in which the language is read.
#define LAYOUT_STYLE {layout}
"""
RIGHT_TO_LEFT = ("ar", "fa", "he", "ur")  # as the PO file's Language says


def quoted(text):
    """The text as a quoted string of a resource script."""
    escapes = {"\\": "\\\\", '"': '""', "\n": "\\n", "\t": "\\t", "\r": "\\r"}
    return '"' + "".join(escapes.get(char, char) for char in text) + '"'


def faults_of(entry, seen):
    """Everything that keeps an entry from becoming a resource string."""
    context = entry.msgctxt or ""
    if not context.isdigit() or int(context) > MAX_STRING_ID:
        yield f"msgctxt {context!r} is no string id"
    elif int(context) in seen:
        yield f"string id {context} comes twice"
    if not entry.msgstr:
        yield f"string id {context} has no text"
    elif PLACEHOLDER.findall(entry.msgid) != PLACEHOLDER.findall(entry.msgstr):
        yield f"string id {context}: placeholders differ from the English text"
    if len(entry.msgstr.encode("utf-16-le")) // 2 > MAX_STRING_UNITS:
        yield f"string id {context}: text too long"


def read_strings(path):
    """Texts by string id, the language's name, and the list of faults, each with its line."""
    strings, faults = {}, []
    file = polib.pofile(path, encoding="utf-8", wrapwidth=0)
    for entry in file:
        if entry.obsolete:
            continue
        found = [f"{path}:{entry.linenum}: {fault}" for fault in faults_of(entry, strings)]
        faults += found
        if not found:
            strings[int(entry.msgctxt)] = entry.msgstr
    return strings, file.metadata.get("Language", ""), faults


def write_script(path, source, strings):
    rows = (f"  {number}, {quoted(strings[number])}\n" for number in sorted(strings))
    with open(path, "w", encoding="utf-8", newline="\n") as script:
        script.write(HEADER.format(source=source))
        script.writelines(rows)
        script.write("END\n")


def write_captions(path, source, strings, language):
    mirrored = language.split("_")[0] in RIGHT_TO_LEFT
    rows = (f"#define TEXT_{number} {quoted(strings[number])}\n" for number in sorted(strings))
    with open(path, "w", encoding="utf-8", newline="\n") as header:
        header.write(CAPTIONS_HEADER.format(source=source,
                                            layout="WS_EX_LAYOUTRTL" if mirrored else "0"))
        header.writelines(rows)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("po", help="the PO file")
    parser.add_argument("rc", help="the resource script to write")
    parser.add_argument("captions", help="the header for dialog templates to write")
    parser.add_argument("--source-name", help="how the files name their source; default: the path")
    arguments = parser.parse_args()

    strings, language, faults = read_strings(arguments.po)
    if faults:
        sys.exit("\n".join(faults))
    source = arguments.source_name or arguments.po
    write_script(arguments.rc, source, strings)
    write_captions(arguments.captions, source, strings, language)


if __name__ == "__main__":
    main()
