"""Shows that text_numbers.py finds numbers without words and words without a use, in a small tree made for the purpose."""
import pathlib
import tempfile
import unittest

import text_numbers


class TextNumbers(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        unused = "".join(f'    {{{number}, "Kept"}},\n' for number in sorted(text_numbers.UNUSED))
        self.write("src/settings/message_steps.h", '    {300, "Searching"},\n    {301, "None"},\n' + unused)

    def write(self, path, text):
        (self.root / path).parent.mkdir(parents=True, exist_ok=True)
        (self.root / path).write_text(text)

    def findings(self):
        return list(text_numbers.findings(self.root))

    def test_every_way_to_use_a_number_is_seen(self):
        for use in ('show(language.Text(300) + " ...");', 'ShowStep(m_use, 300, " " + std::to_string(line));',
                    'show(text(modem ? 300 : 301));', '    {"cmdOk", 300},', '    {300, "cmdOk"},',
                    'const LangPieces pieces = {{300, " ("}};', "const int first = kr4 ? 300 : 301;",
                    "return kr4 ? 300 : 301;", 'either(300, "Could not find")', "Text(c == '\"' ? 300 : 301)"):
            self.write("src/core/steps.cpp", use + "\nlanguage.Text(301);\n")
            self.assertEqual(self.findings(), [], use)

    def test_a_number_without_words_is_found_with_its_line(self):
        self.write("src/core/steps.cpp", "language.Text(300);\n\nlanguage.Text(301);\nlanguage.Text(302);\n")
        self.assertEqual(self.findings(), ["src/core/steps.cpp:4: number 302 has no words"])

    def test_words_that_nothing_uses_are_found_with_their_line(self):
        self.write("src/core/steps.cpp", '// Text(301)\nlanguage.Text(300); // and "Text(301)"\n')
        self.assertEqual(self.findings(), ["src/settings/message_steps.h:2: nothing uses number 301"])

    def test_other_numbers_are_none(self):
        self.write("src/core/steps.cpp", "WaitMs(500);\nlanguage.Text(300);\nlanguage.Text(301);\nport.Open(9600);\n")
        self.assertEqual(self.findings(), [])


if __name__ == "__main__":
    unittest.main()
