#!/usr/bin/python3
"""Proves that the check of the texts finds faults: each case spoils a copy of the shipped files."""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

import polib

TREE = pathlib.Path(__file__).resolve().parent.parent.parent
CHECK = TREE / "tools" / "check-strings.py"


class CheckStrings(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        for path in (TREE / "resources" / "strings").glob("*.po"):
            shutil.copy(path, self.folder)

        shutil.copytree(TREE / "resources" / "dialogs", self.folder / "dialogs")

    def run_check(self):
        return subprocess.run([sys.executable, CHECK, "--strings", self.folder,
                               "--dialogs", self.folder / "dialogs"],
                              capture_output=True, text=True, check=False)

    def spoil(self, number, language="de", **fields):
        """Sets fields of an entry; None as the text takes the entry out."""
        path = self.folder / f"{language}.po"
        file = polib.pofile(str(path), encoding="utf-8", wrapwidth=0)
        entry = next(entry for entry in file if entry.msgctxt == str(number))
        if fields.get("msgstr", "") is None:
            file.remove(entry)
        for name, value in fields.items():
            setattr(entry, name, value)
        file.save(str(path))

    def expect(self, *words):
        result = self.run_check()
        self.assertNotEqual(result.returncode, 0)
        for word in words:
            self.assertIn(word, result.stderr)

    def test_shipped_texts_pass(self):
        result = self.run_check()
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_missing_text(self):
        self.spoil(207, msgstr=None)
        self.expect("de.po: string 207 is missing")

    def test_id_that_comes_twice(self):
        self.spoil(208, msgctxt="209")
        self.expect("string 209: the id comes twice", "string 208 is missing")

    def test_id_that_the_code_lacks(self):
        for language in ("enus", "de", "he"):
            self.spoil(4086, language, msgctxt="4087")
        self.expect("id 4086 is only in the code", "id 4087 is not in the code")

    def test_lost_placeholder(self):
        self.spoil(281, msgstr="Eigenes")
        self.expect("string 281: placeholders differ", "string 281: not exactly one %d")

    def test_comma_in_letter(self):
        self.spoil(108, msgstr="Letter, US")
        self.expect("string 108: a comma")

    def test_text_beyond_its_limit(self):
        self.spoil(146, msgstr="x" * 32)
        self.expect("string 146: 32 characters where 31 fit")

    def test_limit_beyond_the_field(self):
        for language in ("enus", "de", "he"):
            self.spoil(190, language, comment="limit: 24")
        self.expect("string 190: the comment's limit exceeds the field's 23")

    def test_access_key_clash(self):
        self.spoil(205, msgstr="Auf&tragsmodus")
        self.spoil(1010, msgstr="Sor&tieren")
        self.expect("dialog 111: access key T is also string")

    def test_access_key_of_apply(self):
        self.spoil(205, "enus", msgstr="Job &as usual")
        self.expect("dialog 111: access key A is Apply's")

    def test_access_key_of_apply_in_hebrew(self):
        self.spoil(4006, "he", msgstr="&חד-צדדי")
        self.expect("dialog 111: access key ח is Apply's")

    def replace_in_template(self, old, new, template="print_options"):
        path = self.folder / "dialogs" / f"{template}.rc"
        text = path.read_text(encoding="utf-8")
        self.assertIn(old, text)
        path.write_text(text.replace(old, new), encoding="utf-8")

    def test_template_without_a_control(self):
        self.replace_in_template("  LTEXT TEXT_129, 1414,", "  // LTEXT TEXT_129, 1414,")
        self.expect("string 129: dialog 111, control 1414: not in the template")

    def test_template_with_another_caption(self):
        self.replace_in_template("CONTROL TEXT_4006, 1240,", "CONTROL TEXT_4005, 1240,")
        self.expect("string 4005: dialog 111, control 1240: only in the template",
                    "string 4006: dialog 111, control 1240: not in the template")

    def test_template_without_a_control_that_shows_several_texts_in_turn(self):
        self.replace_in_template("  LTEXT TEXT_1189, 1268,", "  // LTEXT TEXT_1189, 1268,", "custom_paper")
        self.expect("string 1189: dialog 657, control 1268: not in the template",
                    "string 1190: dialog 657, control 1268: not in the template")

    def test_second_access_key(self):
        self.spoil(205, msgstr="&Auftrags&modus")
        self.expect("string 205: not exactly one access key")

    def test_default_favorite_with_two_names(self):
        self.spoil(202, msgstr="Vorgabe")
        self.expect("string 4011: not the same as string 202")

    def test_favorites_of_one_name(self):
        self.spoil(5005, msgstr="Standard")
        self.expect("the favorite's name is also string 4011's")

    def test_papers_of_one_name(self):
        self.spoil(4065, msgstr="16K (195 x 270 mm)")
        self.expect("the paper's name is also string 4064's")

    def test_name_with_a_character_that_dialogs_remove(self):
        self.spoil(5025, msgstr="<Neu>")
        self.expect("string 5025: a character that names can't hold")

    def test_pieces_that_get_too_long_together(self):
        self.spoil(6009, msgstr="x" * 120)
        self.expect("the booklet message gets")

    def test_comment_that_stays_behind(self):
        self.spoil(190, comment="Paper source.")
        self.expect("string 190: the comment differs")


if __name__ == "__main__":
    unittest.main()
