"""The stand-ins of the demo for the converters of flash programs, together with the real objcopy."""

import os
import subprocess
import tempfile
import unittest

DEMO = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "demo")
ADDRESS = 0x60000


def record(kind, address, address_bytes, data):
    body = bytes([address_bytes + len(data) + 1]) + address.to_bytes(address_bytes, "big") + data
    return f"S{kind}{(body + bytes([255 - sum(body) % 256])).hex().upper()}"


class Converters(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="harvelop-test-")
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def run_tool(self, name, *arguments):
        tool = name if name == "objcopy" else os.path.join(DEMO, name)
        return subprocess.run([tool, *arguments], cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              timeout=60, check=False).returncode

    def write(self, name, content):
        with open(os.path.join(self.folder, name), "wb") as file:
            file.write(content)

    def read(self, name):
        with open(os.path.join(self.folder, name), "rb") as file:
            return file.read()

    def normalised(self, *records):
        """What recnorm makes of a file of these lines: its lines."""
        self.write("temp.sre", "\n".join(records).encode() + b"\n")
        self.assertEqual(self.run_tool("recnorm", "temp.sre"), 0)
        return self.read("temp.sre").decode().split("\r\n")

    def test_the_image_comes_back_out_of_the_records_byte_for_byte(self):
        for text in (b"", b"RA1S 1V\r\n", bytes(range(256)) * 16):
            self.write("temp", text)
            self.assertEqual(self.run_tool("imgbuild", "temp", "temp.bin"), 0)
            image = self.read("temp.bin")
            self.assertEqual(image, b"STAND-IN IMAGE %d\n" % len(text) + text)
            self.assertEqual(self.run_tool("objcopy", f"--change-addresses={ADDRESS:#x}", "-I", "binary", "-O", "srec",
                                           "temp.bin", "temp.sre"), 0)
            self.assertEqual(self.run_tool("recnorm", "temp.sre"), 0)
            lines = self.read("temp.sre").decode().split("\r\n")
            self.assertEqual(lines[-2:], [record(8, ADDRESS, 3, b""), ""])
            data = [line for line in lines if line.startswith("S2")]
            expected = [record(2, ADDRESS + at, 3, image[at:at + 32]) for at in range(0, len(image), 32)]
            self.assertEqual(data, expected)
            self.assertEqual(self.run_tool("objcopy", "-I", "srec", "-O", "binary", "temp.sre", "back.bin"), 0)
            self.assertEqual(self.read("back.bin"), image)

    def test_records_of_any_width_length_and_case_come_out_alike(self):
        header, end = record(0, 0, 2, b"HDR"), record(8, 0x100, 3, b"")
        lines = self.normalised(header.lower(), record(1, 0x100, 2, b"a" * 20), record(3, 0x114, 4, b"b" * 20).lower(),
                                record(5, 2, 2, b""), record(2, 0x200, 3, b"c"), record(9, 0x100, 2, b""))
        self.assertEqual(lines, [header, record(2, 0x100, 3, b"a" * 20 + b"b" * 12), record(2, 0x120, 3, b"b" * 8),
                                 record(2, 0x200, 3, b"c"), end, ""])

    def test_addresses_above_24_bits_take_the_widest_records(self):
        lines = self.normalised(record(3, 0xFFFFFF, 4, b"ab"), record(7, 0, 4, b""))
        self.assertEqual(lines, [record(3, 0xFFFFFF, 4, b"ab"), record(7, 0, 4, b""), ""])

    def test_what_is_already_normal_stays(self):
        first = self.normalised(record(2, ADDRESS, 3, b"x" * 40), record(8, ADDRESS, 3, b""))
        self.assertEqual(self.normalised(*first[:-1]), first)

    def test_a_file_that_is_not_sound_is_left_alone(self):
        good = record(2, ADDRESS, 3, b"abc")
        for bad in ("", "x", "S", good[:-1], good[:-2], good[:-1] + "G", "S4" + good[2:], good[:-2] + "00",
                    record(2, ADDRESS, 3, b"ab")[:2] + "FF"):
            content = f"{good}\n{bad}\n".encode()
            self.write("temp.sre", content)
            self.assertEqual(self.run_tool("recnorm", "temp.sre"), 1, bad)
            self.assertEqual(self.read("temp.sre"), content)
        self.write("temp.sre", b"")
        self.assertEqual(self.run_tool("recnorm", "temp.sre"), 1)

    def test_failures_leave_no_files_behind(self):
        self.assertNotEqual(self.run_tool("imgbuild", "none", "temp.bin"), 0)
        self.assertNotEqual(self.run_tool("recnorm", "none"), 0)
        self.assertEqual(self.run_tool("imgbuild", "one"), 2)
        self.assertEqual(self.run_tool("recnorm"), 2)
        self.assertEqual(os.listdir(self.folder), [])


if __name__ == "__main__":
    unittest.main()
