"""Compares targets with rows, as Markdown. A missing row is an error, unless only some programs ran."""
from rows import NANOSECONDS

TARGET_FIELDS = {"what", "row", "value", "over", "overValue", "unit", "atLeast", "atMost"}


def measured(rows, target):
    """None if a row is missing."""
    unknown = set(target) - TARGET_FIELDS
    if unknown:
        raise ValueError(f"target '{target.get('what')}' has unknown fields: {sorted(unknown)}")
    value = rows.median(target["row"], target.get("value", "time"))
    if "over" in target:
        divisor = rows.median(target["over"], target.get("overValue", target.get("value", "time")))
        value = None if value is None or divisor is None else value / divisor
    if value is not None and "unit" in target:
        value /= NANOSECONDS[target["unit"]]
    return value


def is_met(target, value):
    """None for a target without a limit."""
    if "atLeast" in target:
        return value >= target["atLeast"]
    if "atMost" in target:
        return value <= target["atMost"]
    return None


def number(value):
    text = f"{value:.2f}" if abs(value) < 100 else f"{value:,.0f}"
    return text.rstrip("0").rstrip(".") if "." in text else text


def wanted(target):
    unit = " " + target["unit"] if "unit" in target else ""
    if "atLeast" in target:
        return f"at least {target['atLeast']}{unit}"
    if "atMost" in target:
        return f"at most {target['atMost']}{unit}"
    return ""


def line(rows, target, partial):
    value = measured(rows, target)
    if value is None:
        if not partial:
            raise ValueError(f"target '{target['what']}' names a row that no program wrote")
        return f"| {target['what']} | {wanted(target)} | not run | |"
    unit = " " + target["unit"] if "unit" in target else ""
    verdict = {True: "met", False: "**not met**", None: ""}[is_met(target, value)]
    return f"| {target['what']} | {wanted(target)} | {number(value)}{unit} | {verdict} |"


def table(rows, areas, partial=False):
    parts = []
    for area in areas:
        parts.append(f"### {area['title']}\n\n| What | Wanted | Measured | |\n|---|---|---|---|\n" +
                     "\n".join(line(rows, target, partial) for target in area["targets"]) + "\n")
    return "\n".join(parts)
