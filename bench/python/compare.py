"""What plots of the same streams cost in xov and in ObsPy, steps of interactive figures, and drums a second: a table.

PYTHONPATH=build/release/python build/python-environment/bin/python bench/python/compare.py [--short]

Rivals take turns; each figure is the least of three runs, by the clock and of the processor (with threads and the kernel's part).
"""

import argparse
import os
import tempfile
import time
import warnings

import matplotlib

matplotlib.use("Agg")
import numpy
import obspy

import xov

warnings.simplefilter("ignore")
START = obspy.UTCDateTime(2024, 3, 1)


def least(*tasks, repeats=3):
    """Milliseconds (wall, processor) of each task, the least of runs in turn."""
    best = [(float("inf"), float("inf"))] * len(tasks)
    for _ in range(repeats):
        for i, task in enumerate(tasks):
            wall, cpu = time.perf_counter(), time.process_time()
            task()
            took = (time.perf_counter() - wall) * 1000, (time.process_time() - cpu) * 1000
            best[i] = tuple(map(min, best[i], took))
    return best


def noise(count, seed):
    """A day's background: a random walk that is held back, with an event."""
    random = numpy.random.default_rng(seed)
    samples = random.normal(size=count).astype("float32") * 100
    at = count // 3
    length = min(count // 50, count - at)
    samples[at : at + length] += 5000 * numpy.exp(-numpy.arange(length) / (length / 5)) * random.normal(size=length)
    return samples


def trace(count, delta, channel, seed, distance=None):
    header = {"network": "XX", "station": f"S{seed:03d}", "channel": channel, "delta": delta, "starttime": START}
    made = obspy.Trace(noise(count, seed), header)
    if distance is not None:
        made.stats.distance = distance
    return made


def row(name, ours, theirs):
    print(
        f"| {name} | {ours[0]:.0f} | {ours[1]:.0f} | {theirs[0]:.0f} | {theirs[1]:.0f} |"
        f" {theirs[0] / ours[0]:.1f} | {theirs[1] / ours[1]:.1f} |",
        flush=True,
    )


def plots(folder, scale):
    print("| plot, to a PNG file | xov, ms | CPU | ObsPy, ms | CPU | ratio | CPU |\n|---|---:|---:|---:|---:|---:|---:|")
    ours, theirs = os.path.join(folder, "a.png"), os.path.join(folder, "b.png")
    day = obspy.Stream([trace(8_640_000 // scale, 0.01 * scale, "HHZ", 1)])
    row(
        "drum of a day at 100 Hz",
        *least(
            lambda: xov.drum(day, rows=96, row_duration=900, size=(800, 600)).save(ours),
            lambda: day.plot(type="dayplot", interval=15, size=(800, 600), outfile=theirs),
        ),
    )
    row(
        "the same day as one trace",
        *least(
            lambda: xov.section(day, size=(800, 250)).save(ours), lambda: day.plot(size=(800, 250), outfile=theirs)
        ),
    )
    many = obspy.Stream([trace(36_000 // scale, 0.1, "BHZ", i, 1000.0 * (10 + i)) for i in range(100)])
    for one in many:
        one.stats.sac = {"dist": one.stats.distance / 1000, "gcarc": one.stats.distance / 111_195}
    row(
        "section of 100 traces of an hour",
        *least(
            lambda: xov.section(many, distance_axis="km", size=(800, 600)).save(ours),
            lambda: many.plot(type="section", size=(800, 600), outfile=theirs),
        ),
    )
    row("three components of 30 s", *least(lambda: xov.three(obspy.read()).save(ours), lambda: obspy.read().plot(outfile=theirs)))


def steps(scale):
    samples = noise(10_000_000 // scale, 2)
    figure = xov.section(xov.Record(samples, 0.01, "2024-03-01"), raw=True)
    ours = []
    for _ in range(20):
        started = time.perf_counter()
        figure.navigate("zoom", 0.9, 450, 240)
        figure.bytes("png", 1)
        ours.append((time.perf_counter() - started) * 1000)
    print(f"\nWheel to picture of 10 million samples, in the kernel: {numpy.median(ours):.1f} ms (limit 50)")


def drums(folder, scale):
    root = os.path.join(folder, "sds")
    days = 8
    for day in range(days):
        at = START + day * 86400
        place = os.path.join(root, str(at.year), "XX", "S001", "HHZ.D")
        os.makedirs(place, exist_ok=True)
        one = trace(8_640_000 // scale, 0.01 * scale, "HHZ", 1)
        one.stats.starttime = at
        one.data = one.data.astype("int32")
        one.write(os.path.join(place, f"XX.S001..HHZ.D.{at.year}.{at.julday:03d}"), format="MSEED")
    archive = xov.archive(root, "XX.S001.*.HHZ")
    span = (START.date, (START + (days - 1) * 86400).date)
    print("\n| drums of days at 100 Hz from miniSEED | a second |\n|---|---:|")
    for processes in (1, 2):
        started = time.perf_counter()
        wrong = xov.drums(archive, span, out=os.path.join(folder, f"wall{processes}"), processes=processes)
        print(f"| {processes} process{'es' if processes > 1 else ''} | {days / (time.perf_counter() - started):.2f} |")
        assert not wrong, wrong
    try:
        from distributed import Client, LocalCluster
    except ImportError:
        print("| Dask | not installed |")
        return
    with LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster, Client(cluster) as client:
        started = time.perf_counter()
        xov.drums(archive, span, out=os.path.join(folder, "dask"), client=client)
        print(f"| Dask, 2 workers | {days / (time.perf_counter() - started):.2f} |")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--short", action="store_true", help="a tenth of the samples")
    scale = 10 if parser.parse_args().short else 1
    with tempfile.TemporaryDirectory() as folder:
        plots(folder, scale)
        steps(scale)
        drums(folder, scale)


if __name__ == "__main__":
    main()
