"""The plots that targets.json files ask for."""
import matplotlib

matplotlib.use("Agg")
# The same rows give the same file.
matplotlib.rcParams["svg.hashsalt"] = "bench"
import matplotlib.pyplot as pyplot

from rows import NANOSECONDS


def value_of(rows, plot, name):
    value = rows.median(name, plot.get("y", "time"))
    return value / NANOSECONDS[plot["yUnit"]] if "yUnit" in plot else value


def draw_lines(axes, rows, plot):
    for series in plot["series"]:
        points = sorted((rows.median(name, plot["x"]), value_of(rows, plot, name))
                        for name in rows.matching(series["rows"]))
        if points:
            axes.plot(*zip(*points), marker="o", label=series["label"])
    if plot.get("log"):
        axes.set_xscale("log")
        axes.set_yscale("log")
    else:
        axes.set_ylim(bottom=0)
    axes.set_xlabel(plot["xLabel"])
    axes.legend()
    axes.grid(True, which="major", alpha=0.3)


def draw_bars(axes, rows, plot):
    labels, values = [], []
    for series in plot["series"]:
        for name in rows.matching(series["rows"]):
            labels.append(series["label"])
            values.append(value_of(rows, plot, name))
    bars = axes.bar(labels, values)
    axes.bar_label(bars, fmt="%.3g")


def draw(rows, plot, folder, partial=False):
    """Draws a plot. Returns the file's name, or None if there are no rows. A series without rows is an error, unless
    only some programs ran."""
    empty = [series["label"] for series in plot["series"] if not rows.matching(series["rows"])]
    if empty and not partial:
        raise ValueError(f"plot {plot['file']}: no rows for {empty}")
    if len(empty) == len(plot["series"]):
        return None
    figure, axes = pyplot.subplots(figsize=(7, 4.2))
    {"lines": draw_lines, "bars": draw_bars}[plot["kind"]](axes, rows, plot)
    axes.set_title(plot["title"])
    axes.set_ylabel(plot["yLabel"])
    figure.tight_layout()
    figure.savefig(folder / plot["file"], metadata={"Date": None})
    pyplot.close(figure)
    return plot["file"]
