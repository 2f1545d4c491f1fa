"""The rows of all benchmark programs: times in nanoseconds and counters, each a list with a value per repetition."""
import json
import re
import statistics
from pathlib import Path

NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}

# Google Benchmark's own fields of a row; every other number is a counter of the program.
KNOWN_FIELDS = {
    "family_index", "per_family_instance_index", "repetitions", "repetition_index", "threads", "iterations",
    "real_time", "cpu_time",
}
SUFFIX = re.compile(
    r"/(manual_time|real_time|process_time|iterations:\d+|repeats:\d+|min_time:[\d.]+|threads:\d+)(?=/|$)")


class Rows:
    def __init__(self, folder):
        self.context = {}
        self.by_name = {}
        for file in sorted(Path(folder).glob("*.json")):
            content = json.loads(file.read_text())
            self.context = self.context or content.get("context", {})
            for row in content["benchmarks"]:
                self._add(row, file)

    def _add(self, row, file):
        if row.get("error_occurred"):
            raise ValueError(f"{file}: {row['name']} failed: {row.get('error_message', '')}")
        if row.get("run_type", "iteration") != "iteration":
            return  # the program's own means and medians
        values = self.by_name.setdefault(SUFFIX.sub("", row["name"]), {})
        values.setdefault("time", []).append(row["real_time"] * NANOSECONDS[row.get("time_unit", "ns")])
        for name, value in row.items():
            if name not in KNOWN_FIELDS and isinstance(value, (int, float)) and not isinstance(value, bool):
                values.setdefault(name, []).append(value)

    def median(self, name, value="time"):
        """None if no program wrote this row."""
        if name not in self.by_name:
            return None
        if value not in self.by_name[name]:
            raise ValueError(f"row {name} has no counter {value}")
        return statistics.median(self.by_name[name][value])

    def matching(self, pattern):
        """Names of the rows whose whole name matches, in the order they were added."""
        return [name for name in self.by_name if re.fullmatch(pattern, name)]

    def as_json(self):
        return {"context": self.context, "rows": self.by_name}
