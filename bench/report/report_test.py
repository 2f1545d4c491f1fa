"""Tests of the report's rows and targets, without plots."""
import json
import tempfile
import unittest
from pathlib import Path

import table
from rows import Rows


def row(name, time, unit="ns", **more):
    return {"name": name, "run_type": "iteration", "real_time": time, "time_unit": unit, **more}


def rows_of(*rows):
    with tempfile.TemporaryDirectory() as folder:
        (Path(folder) / "some.json").write_text(json.dumps({"benchmarks": rows}))
        return Rows(folder)


def line_of(rows, **target):
    return table.line(rows, {"what": "it", **target}, partial=False)


class RowsTest(unittest.TestCase):
    def test_a_median_is_the_middle_of_the_repetitions_in_nanoseconds(self):
        rows = rows_of(row("a", 9, "us"), row("a", 1, "us"), row("a", 2, "us"))
        self.assertEqual(rows.median("a"), 2000)

    def test_a_program_s_own_means_do_not_count(self):
        self.assertEqual(rows_of(row("a", 1), row("a", 100, run_type="aggregate")).median("a"), 1)

    def test_a_name_is_found_without_google_benchmark_s_suffixes(self):
        self.assertEqual(rows_of(row("a/ahead:8/iterations:1/manual_time", 7)).median("a/ahead:8"), 7)

    def test_a_counter_is_taken_as_it_is(self):
        self.assertEqual(rows_of(row("a", 1, "ms", kept=16.5)).median("a", "kept"), 16.5)

    def test_a_counter_that_is_not_there_is_an_error(self):
        with self.assertRaisesRegex(ValueError, "row a has no counter kept"):
            rows_of(row("a", 1)).median("a", "kept")

    def test_a_row_that_failed_is_an_error(self):
        with self.assertRaisesRegex(ValueError, "a failed: no file"):
            rows_of(row("a", 1, error_occurred=True, error_message="no file"))


class TableTest(unittest.TestCase):
    def test_a_target_that_is_reached_is_met(self):
        self.assertEqual(line_of(rows_of(row("a", 6), row("b", 3)), row="a", over="b", atLeast=2),
                         "| it | at least 2 | 2 | met |")

    def test_a_target_that_is_not_reached_stands_out(self):
        self.assertEqual(line_of(rows_of(row("a", 5.5, "us")), row="a", unit="us", atMost=5),
                         "| it | at most 5 us | 5.5 us | **not met** |")

    def test_a_target_without_a_limit_is_only_shown(self):
        self.assertEqual(line_of(rows_of(row("a", 1234567)), row="a", unit="us"), "| it |  | 1,235 us |  |")

    def test_a_row_that_no_program_gave_is_an_error(self):
        with self.assertRaisesRegex(ValueError, "'it' names a row that no program wrote"):
            line_of(rows_of(row("a", 1)), row="mistyped")

    def test_a_divisor_that_no_program_gave_is_an_error(self):
        with self.assertRaisesRegex(ValueError, "'it' names a row that no program wrote"):
            line_of(rows_of(row("a", 1)), row="a", over="mistyped")

    def test_a_row_that_was_not_to_run_is_shown_as_such(self):
        self.assertEqual(table.line(rows_of(row("a", 1)), {"what": "it", "row": "b", "atMost": 1}, partial=True),
                         "| it | at most 1 | not run | |")

    def test_a_mistyped_field_of_a_target_is_an_error(self):
        with self.assertRaisesRegex(ValueError, "unknown fields: \\['atmost'\\]"):
            line_of(rows_of(row("a", 1)), row="a", atmost=1)


if __name__ == "__main__":
    unittest.main()
