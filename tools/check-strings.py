#!/usr/bin/python3
"""Checks the driver's texts in all languages: complete, fitting, and free of clashing access keys.

The English file leads: its ids are those of the code, and its translators' comments hold what a
program must know, `dialog: <dialog>/<control> ...` for the controls that show a text and
`limit: <characters>` for the room that it has. Dialogs that have their template must show just the
texts that the comments say. Every fault is told on a line of its own.
"""

import argparse
import pathlib
import re
import sys

import polib

ENGLISH = "enus"
PLACEHOLDER = re.compile(r"%(?:[0-9.]*[a-zA-Z]|!)")
CONTROL = re.compile(r"(\d+)/(\d+)$")
# In a template: its first line, and a control with a text.
TEMPLATE = re.compile(r"^(\d+) DIALOGEX\b", re.MULTILINE)
TEMPLATE_CONTROL = re.compile(r"^  \w+ TEXT_(\d+), (\d+),", re.MULTILINE)

PAPERS = (108, 116, 110, 118, 123, 120, 121, 122, 119, 4063, 4064, 4065, 4067, 4068, 340, 4069, 111,
          109, 4070, 411, 4072, 4073, 4074, 6001, 6002, 6003, 6004, 6005)
SOURCES = (4017, 4031, 4018, 178, 190, 179, 193, 194)
MEDIA = (127, 388, 139, 4075, 334, 4076, 5099, 6541, 6542)
# Limits that the formats and buffers set; the comments must not promise more.
HARD_LIMITS = {**dict.fromkeys(PAPERS, 63), **dict.fromkeys(SOURCES, 23), 146: 31, 202: 31, 4011: 31,
               218: 31, 219: 31, 235: 31, 5005: 16, 5025: 28, 281: 24, 237: 99, 255: 129, 256: 129}
BOX_LIMIT = 259  # messages and tooltips pass through 260 characters

# Favorites, and the name of a new watermark: names that dialogs clean of these characters.
CLEAN_NAMES = (202, 4011, 5005, 218, 219, 235, 5025)
UNCLEAN = set("<>(),;?:|\\/'.\"*")

# Texts that say the same thing in two places, apart from access keys.
TWINS = ((4011, 202), (219, 4057), (235, 5080), (3001, 1001), (3006, 1008), (1204, 4020), (217, 1168),
         (409, 4061), (1500, 1502), (201, 213), (203, 212), (178, 4031), (4018, 4031), (179, 190),
         (193, 6434), (194, 6535), (6432, 6535), (5003, 4003), (1472, 4078))
# The names by which favorites are told apart.
DISTINCT = (4011, 5005, 218, 219, 235)

# The sheet around these pages has an Apply button, whose access key the system's language decides.
PAGES = ("1072", "111", "693", "626", "645", "1511", "651", "1512")
APPLY_KEYS = {"enus": "A", "de": "B", "he": "ח"}

NAME_ROOM = 30  # a model's name inside the message of 256


def pieces(text, *ids, between=0, behind=0):
    """The length of texts that are shown one behind the other."""
    return sum(len(text[i]) + behind for i in ids) + between * (len(ids) - 1)


def joined_lengths(text):
    """What is joined at run time, and how long it gets."""
    gap = len(text[408])
    longest_media = max((text[i] for i in MEDIA), key=len)
    yield "booklet message", pieces(text, 6007, 6540, 6009, 6010, 6011, behind=2)
    yield "tooltip of two-sided printing", pieces(text, 5031, 5035, 5049, 6012, 5040, between=gap)
    yield "tooltip of booklet printing", pieces(text, 5085, 6009, 6540, 6007, 6011, 6010, between=gap)
    yield "tooltip of the scale", pieces(text, 5043, 5089, between=gap)
    yield "tooltip of the paper source", pieces(text, 5033, 5050, between=gap)
    yield "message of 5001", len(longest_media) + pieces(text, 5001, 5003, 5002)
    yield "message of 256", pieces(text, 200, 256, 255) + len(": ") + 2 * NAME_ROOM


def without_key(text):
    return text.replace("&", "")


def annotation(entry, name):
    """The rest of the comment line `name: ...`, or nothing."""
    for line in entry.comment.split("\n"):
        if line.startswith(name + ":"):
            return line[len(name) + 1:].strip()
    return ""


def controls_of(entry):
    return [match.groups() for word in annotation(entry, "dialog").split()
            if (match := CONTROL.match(word))]


def templates_in(folder):
    """The dialogs that have a template: by dialog, the pairs of control and string that it holds."""
    templates = {}
    for path in sorted(folder.glob("*.rc")):
        parts = TEMPLATE.split(path.read_text(encoding="utf-8"))
        for dialog, body in zip(parts[1::2], parts[2::2]):
            templates[dialog] = {(control, int(text))
                                 for text, control in TEMPLATE_CONTROL.findall(body)}
    return templates


class Language:
    def __init__(self, path):
        self.path = path
        self.name = path.stem
        self.faults = []
        self.entries = {}
        for entry in polib.pofile(str(path), encoding="utf-8", wrapwidth=0):
            if entry.obsolete:
                continue
            if not (entry.msgctxt or "").isdigit():
                self.fault(entry, f"msgctxt {entry.msgctxt!r} is no string id")
            elif int(entry.msgctxt) in self.entries:
                self.fault(entry, "the id comes twice")
            else:
                self.entries[int(entry.msgctxt)] = entry

    def fault(self, entry, what):
        place = f"{self.path}:{entry.linenum}: string {entry.msgctxt}" if entry else f"{self.path}"
        self.faults.append(f"{place}: {what}")

    def check_entries(self, english):
        for number in sorted(english.entries.keys() - self.entries.keys()):
            self.fault(None, f"string {number} is missing")
        for number, entry in self.entries.items():
            if number not in english.entries:
                self.fault(entry, "the English file doesn't have this id")
                continue
            self.check_entry(number, entry, english.entries[number])

    def check_entry(self, number, entry, model):
        text = entry.msgstr
        if not text or entry.fuzzy:
            self.fault(entry, "no text, or not a final one")
        if entry.msgid != model.msgstr:
            self.fault(entry, f"msgid isn't the English text {model.msgstr!r}")
        if entry.comment != model.comment:
            self.fault(entry, "the comment differs from the English file's")
        if PLACEHOLDER.findall(text) != PLACEHOLDER.findall(model.msgstr):
            self.fault(entry, "placeholders differ from the English text")
        if text.startswith("\n") != model.msgstr.startswith("\n"):
            self.fault(entry, "only one of text and English text begins with a line break")
        if "..." in text:
            self.fault(entry, "three full stops instead of an ellipsis")
        limit = annotation(model, "limit")
        room = min(int(limit or BOX_LIMIT), BOX_LIMIT)
        if room > HARD_LIMITS.get(number, BOX_LIMIT):
            self.fault(entry, f"the comment's limit exceeds the field's {HARD_LIMITS[number]}")
        if len(without_key(text)) > room:
            self.fault(entry, f"{len(without_key(text))} characters where {room} fit")
        if number in CLEAN_NAMES and UNCLEAN & set(text):
            self.fault(entry, "a character that names can't hold")
        self.check_access_key(entry, model)

    def check_access_key(self, entry, model):
        if ("&" in entry.msgstr) != ("&" in model.msgstr):
            self.fault(entry, "only one of text and English text has an access key")
        if "&" not in entry.msgstr:
            return
        if not re.fullmatch(r"[^&]*&\w[^&]*", entry.msgstr):
            self.fault(entry, "not exactly one access key, before a letter or digit")
        if not controls_of(model):
            self.fault(entry, "an access key, but no dialog in the comment")

    def check_templates(self, templates):
        """The comments and the templates name the same controls. A template holds one text of a control
        that shows several in turn."""
        for dialog, shown in templates.items():
            said = {(control, number) for number, entry in self.entries.items()
                    for place, control in controls_of(entry) if place == dialog}
            captioned = {control for control, _ in shown & said}
            in_turn = {(control, number) for control, number in said if control in captioned}
            for control, number in sorted((shown ^ said) - in_turn):
                where = "only in the template" if (control, number) in shown else "not in the template"
                self.fault(self.entries.get(number), f"dialog {dialog}, control {control}: {where}")

    def check_dialogs(self, english):
        """No two controls of a dialog may have the same access key."""
        owners = {}
        for number, entry in self.entries.items():
            match = re.search(r"&(\w)", entry.msgstr)
            if not match or number not in english.entries:
                continue
            key = match.group(1).upper()
            for dialog, control in controls_of(english.entries[number]):
                if dialog in PAGES and key == APPLY_KEYS.get(self.name):
                    self.fault(entry, f"dialog {dialog}: access key {key} is Apply's")
                first = owners.setdefault((dialog, key), (number, control))
                if first[0] != number and first[1] != control:
                    self.fault(entry, f"dialog {dialog}: access key {key} is also string {first[0]}'s")

    def check_texts(self):
        """Rules about certain texts and about texts together."""
        text = {number: without_key(entry.msgstr) for number, entry in self.entries.items()}
        for left, right in TWINS:
            if text[left] != text[right]:
                self.fault(self.entries[left], f"not the same as string {right}")
        for group, what in ((DISTINCT, "favorite's name"), (PAPERS, "paper's name")):
            seen = {}
            for number in group:
                if text[number] in seen:
                    self.fault(self.entries[number], f"the {what} is also string {seen[text[number]]}'s")
                seen[text[number]] = number
        if "," in text[108]:
            self.fault(self.entries[108], "a comma")
        if text[281].count("%d") != 1:
            self.fault(self.entries[281], "not exactly one %d")
        if "%" in text[207]:
            self.fault(self.entries[207], "a percent sign: a formatter reads this text")
        for number, value in text.items():
            if number != 281 and PLACEHOLDER.search(value):
                self.fault(self.entries[number], "a placeholder that nothing fills")
        for what, length in joined_lengths(text):
            if length > BOX_LIMIT:
                self.fault(None, f"the {what} gets {length} characters long, and {BOX_LIMIT} fit")


def main():
    tree = pathlib.Path(__file__).resolve().parent.parent
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--strings", type=pathlib.Path, default=tree / "resources" / "strings",
                        help="folder of the PO files")
    parser.add_argument("--ids", type=pathlib.Path, default=tree / "src" / "core" / "string_ids.inc",
                        help="the ids that the code names")
    parser.add_argument("--dialogs", type=pathlib.Path, default=tree / "resources" / "dialogs",
                        help="folder of the dialog templates")
    arguments = parser.parse_args()

    languages = [Language(path) for path in sorted(arguments.strings.glob("*.po"))]
    english = next((language for language in languages if language.name == ENGLISH), None)
    if english is None:
        sys.exit(f"{arguments.strings}: no {ENGLISH}.po")

    ids = {int(number) for number in
           re.findall(r"^OSTREL_STRING\(\w+, (\d+)\)", arguments.ids.read_text(), re.MULTILINE)}
    for number in sorted(ids ^ english.entries.keys()):
        where = "only in the code" if number in ids else "not in the code"
        english.fault(english.entries.get(number), f"id {number} is {where}")
    english.check_templates(templates_in(arguments.dialogs))
    for language in languages:
        language.check_entries(english)
        language.check_dialogs(english)
        if english.entries.keys() <= language.entries.keys() and ids <= english.entries.keys():
            language.check_texts()

    faults = [fault for language in languages for fault in language.faults]
    if faults:
        sys.exit("\n".join(faults))
    print(f"{len(ids)} texts in {len(languages)} languages: no faults")


if __name__ == "__main__":
    main()
