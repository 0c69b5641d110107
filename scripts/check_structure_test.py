"""Tests of what scripts/check_structure.py takes for a fault, and of the tree as it is."""

import unittest

from check_structure import ROOMS, faults_of, faults_of_picture, faults_of_table

SMALL = {"base": "", "files": "base", "sim": "base files"}
SOUND = {
    "src/base/text.h": "#include <string>\n",
    "src/files/file.h": '#include "base/text.h"\n',
    "sim/part.h": '#include "base/text.h"\n#include "files/file.h"\n',
    "sim/part.cpp": '#include "sim/part.h"\n',
}


class Structure(unittest.TestCase):
    def faults_with(self, path, text):
        return faults_of(SOUND | {path: text}, SMALL)

    def test_arrows_of_the_table_are_no_fault(self):
        self.assertEqual(faults_of(SOUND, SMALL), [])

    def test_an_arrow_that_the_table_does_not_allow_is_named_with_its_file_and_include(self):
        self.assertIn('src/files/other.cpp includes "sim/part.h", but files may not include sim',
                      self.faults_with("src/files/other.cpp", '  #  include "sim/part.h"\n'))

    def test_a_cycle_is_named_with_the_includes_that_close_it(self):
        faults = self.faults_with("src/base/text.cpp", '#include "files/file.h"\n')
        self.assertEqual(faults[0], 'src/base/text.cpp includes "files/file.h", but base may not include files')
        self.assertTrue(faults[1].startswith("cycle "))
        for include in ('src/base/text.cpp includes "files/file.h"', 'src/files/file.h includes "base/text.h"'):
            self.assertIn(include, faults[1])

    def test_a_cycle_of_three_rooms_is_found(self):
        faults = self.faults_with("src/base/text.cpp", '#include "sim/part.h"\n')
        self.assertIn("cycle files -> base -> sim -> files", "\n".join(faults))

    def test_includes_are_found_beside_the_file_and_in_angle_brackets(self):
        sources = {"src/base/text.h": "", "src/base/more.h": '#include "text.h"\n',
                   "src/files/file.h": "#include <base/text.h>\n"}
        self.assertEqual(faults_of(sources, {"base": "", "files": "base"}), [])

    def test_what_a_comment_says_of_an_include_does_not_count(self):
        self.assertEqual(self.faults_with("src/base/text.cpp", '// #include "sim/part.h"\n'), [])

    def test_a_file_may_do_more_than_its_folder(self):
        rooms = {"base": "", "sim": "base", "files": "base", "files/fast.cpp": "files sim"}
        sources = {"src/base/a.h": "", "sim/b.h": "#include <base/a.h>", "src/files/c.h": "#include <base/a.h>",
                   "src/files/fast.cpp": "#include <files/c.h>\n#include <sim/b.h>"}
        self.assertEqual(faults_of(sources, rooms), [])
        self.assertEqual(faults_of(sources | {"src/files/slow.cpp": "#include <sim/b.h>"}, rooms),
                         ['src/files/slow.cpp includes "sim/b.h", but files may not include sim'])

    def test_a_folder_that_is_no_room_is_named(self):
        self.assertEqual(self.faults_with("src/files/deep/file.h", ""),
                         ["src/files/deep/file.h: its folder is no room of the table"])

    def test_a_line_that_nothing_needs_is_named(self):
        self.assertEqual(faults_of({"src/base/a.h": "", "src/files/b.h": ""}, {"base": "", "files": "base"}),
                         ["table: files includes nothing of base"])

    def test_a_table_whose_arrows_point_up_is_a_fault(self):
        self.assertEqual(faults_of_table({"base": "files", "files": ""}),
                         ["table: base names files, which is not above it"])
        self.assertEqual(faults_of_table(ROOMS), [])

    def test_the_picture_holds_every_room_above_those_that_it_includes(self):
        rooms = {"base": "", "files": "base"}

        def faults(*lines):
            page = "".join(f"    {line} | base, sim\n" for line in lines) + "\nArrows point down only: sim."
            return [fault.removeprefix("docs/architecture.md: ") for fault in faults_of_picture(page, rooms)]

        self.assertEqual(faults("files", "base"), [])
        self.assertEqual(faults("files"), ["the picture does not name base"])
        self.assertEqual(faults("files  sim", "base"), ["the picture names sim, which is no room"])
        for page in (["base", "files"], ["files  base"]):
            self.assertEqual(faults(*page), ["files includes base, which is not below it in the picture"])


if __name__ == "__main__":
    unittest.main()
