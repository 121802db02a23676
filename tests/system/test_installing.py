"""What is installed beside the programs, and that it tells the truth about them."""

import gzip
import os
import pathlib
import re
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

from programs import BIN

BUILD = pathlib.Path(BIN).parent
ROOT = pathlib.Path(__file__).resolve().parents[2]
PACKAGING = ROOT / "packaging"
ID = "org.harvelop.Harvelop"
PROGRAMS = ("harvelop", "harvelctl", "tallysim")


def output(*command, **more):
    return subprocess.run([str(word) for word in command], check=True, capture_output=True, text=True, timeout=120,
                          **more).stdout


def dead_links(folder):
    """What the documents there lead to in the same place and is not there, as (document, link)."""
    return [(page.name, target) for page in sorted(folder.glob("*.md"))
            for target in re.findall(r"\]\(([^)#]+)[^)]*\)", page.read_text())
            if "://" not in target and not (page.parent / target).exists()]


class Installing(unittest.TestCase):
    def test_all_is_installed_where_desktops_and_shells_look_for_it(self):
        with tempfile.TemporaryDirectory(prefix="harvelop-test-") as scratch:
            output("cmake", "--install", BUILD, "--prefix", scratch)
            installed = {str(path.relative_to(scratch)) for path in pathlib.Path(scratch).rglob("*") if path.is_file()}
            wanted = {f"bin/{program}" for program in PROGRAMS}
            wanted |= {f"share/man/man1/{program}.1.gz" for program in PROGRAMS}
            wanted |= {f"share/applications/{ID}.desktop", f"share/metainfo/{ID}.metainfo.xml",
                       f"share/icons/hicolor/scalable/apps/{ID}.svg"}
            wanted |= {f"share/doc/harvelop/{name}" for name in (
                "copyright", "changelog.gz", "changelog.Debian.gz", "examples/70-harvelop.rules",
                "examples/loggers.json", "manual.md", "commands.md", "formats.md", "languages.md", "serial-ports.md",
                "trace.md")}
            wanted |= {f"share/{path}" for path in ("bash-completion/completions/harvelctl",
                                                    "zsh/vendor-completions/_harvelctl",
                                                    "fish/vendor_completions.d/harvelctl.fish")}
            wanted |= {f"share/harvelop/languages/{path.name}" for path in (ROOT / "languages").glob("*.txt")}
            self.assertEqual(wanted - installed, set())
            self.assertEqual(dead_links(pathlib.Path(scratch, "share/doc/harvelop")), [])
            for program in PROGRAMS:
                self.assertRegex(output(f"{scratch}/bin/{program}", "--version"), rf"^{program} \d+\.\d+\n$")
                page = gzip.decompress(pathlib.Path(scratch, f"share/man/man1/{program}.1.gz").read_bytes())
                self.assertTrue(page.startswith(b".TH " + program.upper().encode()))

    def test_manual_pages_say_all_that_the_programs_say_of_themselves(self):
        for program in PROGRAMS:
            page = output("groff", "-man", "-Tutf8", "-P-cbou", "-rLL=200n", BUILD / "packaging" / f"{program}.1")
            lines = {" ".join(line.split()) for line in page.replace("\u2212", "-").splitlines()}
            told = [" ".join(line.split()) for line in output(f"{BIN}/{program}", "--help").splitlines()]
            self.assertGreater(len(told), 5)
            for line in told:
                with self.subTest(program=program):
                    self.assertIn(line, lines)

    def test_manual_pages_have_no_faults(self):
        for program in PROGRAMS:
            faults = subprocess.run(["groff", "-man", "-ww", "-z", "-Tutf8", BUILD / "packaging" / f"{program}.1"],
                                    check=True, capture_output=True, text=True, timeout=120).stderr
            self.assertEqual(faults, "")

    def test_the_desktop_entry_and_the_component_are_valid_and_name_each_other(self):
        self.assertEqual(output("desktop-file-validate", PACKAGING / f"{ID}.desktop"), "")
        self.assertIn("successful", output("appstreamcli", "validate", "--no-net", PACKAGING / f"{ID}.metainfo.xml"))
        component = xml.etree.ElementTree.parse(PACKAGING / f"{ID}.metainfo.xml").getroot()
        self.assertEqual([component.findtext("id"), component.findtext("launchable"), component.findtext("icon")],
                         [ID, f"{ID}.desktop", ID])
        entry = (PACKAGING / f"{ID}.desktop").read_text()
        self.assertIn(f"\nIcon={ID}\n", entry)
        self.assertIn("\nExec=harvelop\n", entry)
        self.assertIn(f'setDesktopFileName("{ID}")', (ROOT / "src/app/main_harvelop.cpp").read_text())

    def test_all_name_one_version(self):
        version = output(f"{BIN}/harvelop", "--version").split()[1]
        component = xml.etree.ElementTree.parse(PACKAGING / f"{ID}.metainfo.xml").getroot()
        first = re.compile(r"^## (\S+)", re.MULTILINE).search((ROOT / "CHANGELOG.md").read_text())
        debian = re.match(r"harvelop \((\S+)-0harvelop\d+\) ", (PACKAGING / "debian_changelog").read_text())
        self.assertEqual({component.find("releases/release").get("version"), first[1], debian[1]}, {version})

    def test_the_sample_rules_hold_together_once_their_comment_marks_are_taken_away(self):
        lines = (ROOT / "docs/examples/70-harvelop.rules").read_text().splitlines()
        rules = [line[1:] for line in lines if line.startswith("#SUBSYSTEM")]
        self.assertEqual([line for line in lines if line and not line.startswith("#")], [])
        self.assertEqual(len(rules), 4)
        part = r'[A-Z]+(\{\w+\})?(==|\+=|=)"[^"]+"'
        for rule in rules:
            self.assertRegex(rule, rf"^{part}(, {part})+$")
            self.assertRegex(rule.split(", ")[0], "==")


if __name__ == "__main__":
    unittest.main()
