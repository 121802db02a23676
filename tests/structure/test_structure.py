"""Shows that each rule of structure.py finds its breach, in a small tree made for the purpose."""
import pathlib
import tempfile
import unittest

import structure


class Rules(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def write(self, path, text):
        (self.root / path).parent.mkdir(parents=True, exist_ok=True)
        (self.root / path).write_text(text)

    def findings(self, rule):
        return list(structure.RULES[rule](self.root))

    def test_an_include_upwards_is_found_with_its_line(self):
        self.write("src/links/modem.h", "")
        self.write("src/core/waiting.cpp", '#include <string>\n#include "links/modem.h"\n')
        self.assertEqual(
            self.findings("includes_point_downwards"),
            ['src/core/waiting.cpp:2: core may not include links: #include "links/modem.h"'],
        )

    def test_includes_downwards_and_within_a_layer_pass(self):
        for path in ("src/core/waiting.h", "src/links/modem.h", "src/platform/qt/pump.h", "src/links/frmDial.h"):
            self.write(path, "")
        self.write("src/links/modem.cpp", '#include "links/modem.h"\n#include "core/waiting.h"\n')
        self.write("src/app/main.cpp", '#include "platform/qt/pump.h"\n#include "links/frmDial.h"\n')
        self.assertEqual(self.findings("includes_point_downwards"), [])

    def test_layers_beside_each_other_and_the_simulator_are_apart(self):
        for path in ("src/servers/ftp.h", "src/simulator/device.h", "src/core/waiting.h", "src/platform/qt/pump.h"):
            self.write(path, "")
        self.write("src/loading/send.cpp", '#include "servers/ftp.h"\n')
        self.write("src/app/main.cpp", '#include "simulator/device.h"\n')
        self.write("src/simulator/device.cpp", '#include "core/waiting.h"\n')
        self.write("src/panels/rules.cpp", '#include "platform/qt/pump.h"\n')
        self.assertEqual(len(self.findings("includes_point_downwards")), 4)

    def test_an_include_that_is_no_path_from_src_and_an_unknown_folder_are_found(self):
        self.write("src/core/waiting.h", "")
        self.write("src/core/waiting.cpp", '#include "waiting.h"\n')
        self.write("src/extras/more.cpp", '#include "core/waiting.h"\n')
        self.assertEqual(len(self.findings("includes_point_downwards")), 2)

    def test_qt_below_the_forms_is_found(self):
        self.write("src/core/waiting.cpp", "#include <QTimer>\n")
        self.write("src/panels/rules.cpp", '#include "ui_frmOptions.h"\n')
        self.write("src/identify/list.cpp", "#include <QtCore/QString>\n")
        self.write("src/core/frmMessages.cpp", "#include <QWidget>\n")
        self.write("src/platform/qt/pump.cpp", "#include <QTimer>\n")
        self.assertEqual(len(self.findings("qt_stays_in_its_places")), 3)

    def test_mutable_statics_are_found_and_constants_and_functions_pass(self):
        self.write(
            "src/core/state.cpp",
            "static int calls = 0;\n"
            "    static std::vector<int> cache;\n"
            "int g_count = 0;\n"
            "std::map<int, int> g_table;\n"
            "static const int Limit = 3;\n"
            "    static constexpr double Never = 1;\n"
            "static int count(int from);\n"
            "constexpr int Limits[] = {1, 2};\n"
            "int Count(int from);\n"
            "    return value;\n",
        )
        found = self.findings("no_mutable_statics")
        self.assertEqual([finding.split(":")[1] for finding in found], ["1", "2", "3", "4"])

    def test_an_empty_catch_is_found(self):
        self.write("src/core/a.cpp", "try {\n} catch (const Error&) {\n    // nothing\n}\n")
        self.write("src/core/b.cpp", "try {\n} catch (const Error&) {\n    return false;\n}\n")
        self.assertEqual(self.findings("no_empty_catch"), ["src/core/a.cpp:2: an exception passed over in silence"])

    def test_words_that_point_outside_the_tree_are_found(self):
        self.write("docs/a.md", "As Par" + "t 3.1 says.\n")
        self.write("src/core/a.cpp", "// TO" + "DO\nint partly = 3;\n")
        self.write("README.md", "Under /wor" + "k/here.\n")
        self.write("packaging/man/a.1.in", "See /wor" + "k/here.\n")
        self.write("languages/German.txt", "17=TO" + "DO\n")
        self.assertEqual(len(self.findings("words_stay_inside")), 5)

    def test_a_long_file_is_found(self):
        self.write("src/core/a.cpp", "\n" * structure.LONGEST_FILE)
        self.assertEqual(self.findings("files_stay_short"), [])
        self.write("src/core/a.cpp", "\n" * (structure.LONGEST_FILE + 1))
        self.assertEqual(len(self.findings("files_stay_short")), 1)

    def test_a_header_without_its_first_comment_is_found(self):
        self.write("src/core/a.h", "#pragma once\n")
        self.write("src/core/b.h", "// What b is for.\n#pragma once\n")
        self.assertEqual(len(self.findings("headers_read_as_documentation")), 1)

    def test_a_widget_outside_a_layout_and_a_fixed_size_are_found(self):
        geometry = '<property name="geometry"/>'
        self.write(
            "src/panels/a.ui",
            f'<ui><widget name="a">{geometry}<widget name="inner">{geometry}</widget></widget></ui>',
        )
        self.write("src/panels/a.cpp", "button->setFixedWidth(20);\n")
        self.assertEqual(
            self.findings("forms_have_layouts"),
            [
                "src/panels/a.ui:1: inner stands outside any layout",
                "src/panels/a.cpp:1: a fixed geometry: button->setFixedWidth(20);",
            ],
        )

    def test_colours_that_no_palette_gives_are_found(self):
        self.write("src/panels/a.ui", '<ui>\n<color alpha="255">\n<string>background-color: red</string>\n</ui>')
        literal = ["QColor(1, 2, 3);", 'QColor("red");', "pen(Qt::darkGray);", 'label.setStyleSheet("");', 'text = "#ff0000";']
        palette = ["palette().color(QPalette::Text);", "fill(Qt::transparent);", "QColor color = palette.color();"]
        self.write("src/panels/a.cpp", "\n".join(literal + palette))
        self.assertEqual(len(self.findings("colours_come_from_the_palette")), 2 + len(literal))

    def test_pictures_that_the_script_does_not_draw_so_are_found(self):
        self.write(
            "scripts/draw-loggers",
            "import pathlib, sys\n"
            "for name in ('same.svg', 'changed.svg', 'missing.svg'):\n"
            "    (pathlib.Path(sys.argv[1]) / name).write_text('<svg/>')\n",
        )
        self.write("src/panels/pictures/same.svg", "<svg/>")
        self.write("src/panels/pictures/changed.svg", "<svg />")
        self.write("src/panels/pictures/left.svg", "<svg/>")
        self.assertEqual(
            self.findings("pictures_are_as_drawn"),
            [f"src/panels/pictures/{name}.svg:1: is not what scripts/draw-loggers draws" for name in ("changed", "left", "missing")],
        )

    def test_links_and_pictures_that_lead_nowhere_are_found(self):
        self.write("docs/b.md", "# Two `words`, here\n")
        self.write("docs/shown.png", "")
        self.write("docs/unseen.png", "")
        self.write("README.md", "[b](docs/b.md#two-words-here) [c](docs/c.md)\n![s](docs/shown.png) [x](docs/b.md#three)\n"
                                "[own](#none) [far](https://example.org)\n```\n[d](docs/d.md)\n```\n")
        self.assertEqual(self.findings("links_lead_somewhere"), [
            "README.md:1: a link that leads nowhere: docs/c.md",
            "README.md:2: a link that leads nowhere: docs/b.md#three",
            "README.md:3: a link that leads nowhere: #none",
            "docs/unseen.png:1: a picture that no document shows"])

    def test_a_document_that_names_a_file_that_is_gone_is_found(self):
        self.write("src/core/waiting.h", "")
        self.write("docs/a.md", "`waiting.h` `core/waiting.h` `src/core` `src/links` `/tmp/x`\n`waited.h` `Options::x`\n")
        self.assertEqual(self.findings("named_files_exist"), [
            "docs/a.md:1: names a file that is not there: src/links", "docs/a.md:2: names a file that is not there: waited.h"])

    def test_a_promise_without_a_test_and_one_whose_test_is_gone_are_found(self):
        self.write("tests/core/test_a.cpp", "TEST(Files, AreKept)\n{\n}\nTEST_P(Waits, End)\n")
        self.write("tests/deep/test_b.py", "class B(Base):\n    x = 1\n\n    def test_c(self):\n        pass\n\nclass D:\n    pass\n")
        self.write("fuzz/fuzz_e.cpp", "")
        self.write("docs/reliability.md", "| Promise | Held by |\n|---|---|\n| kept `x` | `Files.AreKept`, `test_b.B.test_c` |\n"
                                          "| ends | `Waits.End`, `fuzz_e` |\n| none | `Files` or so |\n| bare | |\n"
                                          "| gone | `test_b.D.test_c` |\n- not `promised`\n")
        self.assertEqual(self.findings("promises_have_tests"), [
            "docs/reliability.md:5: a test that is not there: Files",
            "docs/reliability.md:6: a promise without a test",
            "docs/reliability.md:7: a test that is not there: test_b.D.test_c"])

    def test_a_key_that_no_control_of_that_name_has_is_found(self):
        self.write("src/panels/frmA.ui", "<ui><string>Sa&amp;ve</string><string>&amp;Load</string></ui>")
        self.write("docs/a.md", "**Save** (Alt+V), **Load** (Alt+L)\n**Save** (Alt+L) **Yes** (Alt+Y)\n")
        self.assertEqual(self.findings("keys_are_as_told"), ["docs/a.md:2: no control Save has the key Alt+L"])


if __name__ == "__main__":
    unittest.main()
