"""Tests of what scripts/mutate.py changes, and of what it leaves alone."""

import unittest

from mutate import mutations_of


def changes(text):
    return [(mutation.old, mutation.new) for mutation in mutations_of("a.cpp", text)]


class Mutations(unittest.TestCase):
    def test_comparisons_and_arithmetic_change(self):
        self.assertEqual(changes("if (a < b && c == d) e = f - g;"), [("<", "<="), ("&&", "||"), ("==", "!="), ("-", "+")])

    def test_numbers_and_letters_count_up(self):
        self.assertEqual(changes("x(9, 0x1F, 10U, 1'000, 'E')"),
                         [("9", "10"), ("0x1F", "0x20"), ("10U", "11U"), ("1'000", "1001"), ("'E'", "'F'")])

    def test_words_and_signs_before_a_name_change(self):
        self.assertEqual(changes("return !done || true; ++i;"), [("!", ""), ("||", "&&"), ("true", "false"), ("++", "--")])

    def test_a_sign_at_the_end_of_a_line_changes(self):
        self.assertEqual(changes("a = b +\n    c;"), [("+", "-")])

    def test_references_templates_comments_and_texts_stay(self):
        self.assertEqual(changes('#include <a2>\nstd::array<T>& x{"1 + 1"};  // 1 < 2\n/* 3 */ T* y; R"(4 == 5)"'), [])

    def test_what_the_compiler_checks_stays(self):
        self.assertEqual(changes("static_assert(sizeof(x) == 4); bool operator==(const x&) const;"), [])

    def test_the_line_is_where_the_token_is(self):
        self.assertEqual(mutations_of("a.cpp", "\n\nx = 7;")[0].line, 3)


if __name__ == "__main__":
    unittest.main()
