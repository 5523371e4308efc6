#!/usr/bin/env python3
"""Measures the search against its limits, and prints a table.

usage: bench/search.py [BUILD_FOLDER [REPETITIONS]]    (default build/check, 15; a release build)

Every line is measured beside the least that the same work can cost, a loop in C that looks up one
word after another (the program reads the index once for all words of a query), and queries also
beside SQLite's FTS5 with all titles fetched. The lines of events compare queries with the same that
never look at their events before the result is there. Repetitions are interleaved. The figures are
processor time in milliseconds, which is what passes by the clock too while the files are in memory
and nothing else runs; on a busy machine look at the ratios. Each is given as median/minimum. A line
whose median exceeds its limit ends with OVER.
"""
import json
import os
import statistics
import subprocess
import sys
import tempfile

# Times the loop, but for events: times the query without them.
LIMITS = {'LookUp': 1.3, 'Query': 2, 'Events': 1.1}
OWN_LIMIT = 60  # ms

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


def verdict(value, limit):
    return 'OVER' if value > limit else ''


def row(what, hits, base, larder, limit, fts5=None):
    line = f'{what:24} {hits:>6} {both(base):>15} {both(larder):>15} {ratio(larder, base):>10}'
    line += f' {f"{limit:.1f} x":>6}'
    line += f' {both(fts5):>15} {ratio(larder, fts5):>10}' if fts5 else f' {"":26}'
    print(line, verdict(statistics.median(larder) / statistics.median(base), limit))


def main():
    build = sys.argv[1] if len(sys.argv) > 1 else 'build/check'
    repetitions = int(sys.argv[2]) if len(sys.argv) > 2 else 15
    times, hits = measured(os.path.join(build, 'bin', 'larder-search-bench'), repetitions)
    print(f'{"":24} {"hits":>6} {"loop":>15} {"Larder":>15} {"ratio":>10} {"limit":>6}'
          f' {"FTS5":>15} {"ratio":>10}')
    names = sorted(name.split('/') for name in times if '/loop/' in name)
    for kind, _, what in names:
        row(f'{kind} {what}', hits[f'{kind}/loop/{what}'] if kind == 'Query' else '',
            times[f'{kind}/loop/{what}'], times[f'{kind}/larder/{what}'], LIMITS[kind],
            times.get(f'{kind}/fts5/{what}'))
    own = times['OwnRecipes/500']
    print(f'{"500 own recipes, 2 words":24} {hits["OwnRecipes/500"]:>6} {"":15} {both(own):>15}'
          f' {"":10} {f"{OWN_LIMIT} ms":>6} {"":26}', verdict(statistics.median(own), OWN_LIMIT))
    print(f'{"":24} {"hits":>6} {"no events":>15} {"with events":>15} {"ratio":>10} {"limit":>6}')
    for kind, _, what in names:
        if kind == 'Query':
            row(f'Events {what}', hits[f'Query/larder/{what}'], times[f'Query/quiet/{what}'],
                times[f'Query/larder/{what}'], LIMITS['Events'])
    print('load of the machine:', ' '.join(f'{load:.1f}' for load in os.getloadavg()))


if __name__ == '__main__':
    main()
