#!/usr/bin/env python3
"""Measures the search against its limits, and prints a table.

usage: bench/search.py [BUILD_FOLDER [REPETITIONS]]    (default build/check, 15; a release build)

Every line is measured beside the least that the same work can cost, a loop in C (limits: 1.3 times
for the look-up of a word, 2 times for a query up to its painted result), and queries also beside
SQLite's FTS5 with all titles fetched. Repetitions are interleaved. The figures are processor time
in milliseconds, which is what passes by the clock too while the files are in memory and nothing
else runs; on a busy machine look at the ratios. Each is given as median/minimum.
"""
import json
import os
import statistics
import subprocess
import sys
import tempfile

MILLISECONDS = {'ns': 1e-6, 'us': 1e-3, 'ms': 1}


def measured(program, repetitions):
    """Times by name, and hits (or bytes) by name."""
    with tempfile.TemporaryDirectory() as folder:
        report = os.path.join(folder, 'report.json')
        subprocess.run(
            [program, f'--benchmark_repetitions={repetitions}',
             '--benchmark_enable_random_interleaving=true', '--benchmark_min_time=0.03',
             f'--benchmark_out={report}', '--benchmark_out_format=json'],
            check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        with open(report, encoding='utf-8') as text:
            runs = json.load(text)['benchmarks']
    times, hits = {}, {}
    for run in runs:
        if run['run_type'] != 'iteration':
            continue
        name = run['run_name'].replace('/manual_time', '')
        taken = run['cpu_time'] * MILLISECONDS[run['time_unit']]
        times.setdefault(name, []).append(run.get('painted_cpu_ms', taken))
        hits[name] = int(run.get('hits', run.get('bytes', 0)))
    return times, hits


def both(times):
    return f'{statistics.median(times):.3f}/{min(times):.3f}'


def ratio(times, others):
    median = statistics.median(times) / statistics.median(others)
    return f'{median:.2f}/{min(times) / min(others):.2f}'


def main():
    build = sys.argv[1] if len(sys.argv) > 1 else 'build/check'
    repetitions = int(sys.argv[2]) if len(sys.argv) > 2 else 15
    times, hits = measured(os.path.join(build, 'bin', 'larder-search-bench'), repetitions)
    print(f'{"":26} {"hits":>6} {"loop":>15} {"Larder":>15} {"ratio":>10} {"FTS5":>15} {"ratio":>12}')
    for name, loop in sorted(times.items()):
        kind, _, rest = name.partition('/')
        if not rest.startswith('loop/'):
            continue
        what = rest[len('loop/'):]
        larder = times[f'{kind}/larder/{what}']
        line = f'{kind + " " + what:26} {hits[name] if kind == "Query" else "":>6} '
        line += f'{both(loop):>15} {both(larder):>15} {ratio(larder, loop):>10}'
        fts5 = times.get(f'{kind}/fts5/{what}')
        if fts5:
            line += f' {both(fts5):>15} {ratio(larder, fts5):>12}'
        print(line)
    own = times['OwnRecipes/500']
    print(f'{"500 own recipes, 2 words":26} {hits["OwnRecipes/500"]:>6} {"":15} {both(own):>15}')
    print('load of the machine:', ' '.join(f'{load:.1f}' for load in os.getloadavg()))


if __name__ == '__main__':
    main()
