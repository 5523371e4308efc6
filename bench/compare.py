#!/usr/bin/env python3
"""Measures start, memory and the text reader side by side, and prints a table.

usage: bench/compare.py [BUILD_FOLDER]      (default build/check; a release build)

Needs a screen; without DISPLAY it measures on Qt's offscreen platform and says so. Start times are
medians of interleaved runs, from the start of the process to the first paint of its window.
"""
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

RUNS = 15
DOCUMENT_MEGABYTES = 25


def painted(command, folder):
    """Starts a probe; returns (process, milliseconds to its first paint)."""
    begin = time.perf_counter()
    process = subprocess.Popen(command, cwd=folder, stdout=subprocess.PIPE, text=True)
    line = process.stdout.readline()
    taken = (time.perf_counter() - begin) * 1000
    if line.strip() != 'painted':
        process.kill()
        raise SystemExit(f'{command[0]} showed no window')
    return process, taken


def finish(process):
    process.terminate()
    process.wait()
    process.stdout.close()


def start_times(probe, folder):
    empty, full = [], []
    for _ in range(RUNS):
        for arguments, times in ((['--empty'], empty), ([], full)):
            process, taken = painted([probe, *arguments], folder)
            finish(process)
            times.append(taken)
    return statistics.median(empty), statistics.median(full)


def resident_megabytes(probe, folder):
    process, _ = painted([probe], folder)
    time.sleep(0.5)  # measuring what stays, not how fast it comes
    pages = pathlib.Path(f'/proc/{process.pid}/smaps_rollup').read_text(encoding='ascii')
    finish(process)
    for line in pages.splitlines():
        if line.startswith('Rss:'):
            return int(line.split()[1]) / 1024
    raise SystemExit('no resident size')


def write_document(file):
    paragraph = (r'\pard\li300\fs24 Simmer the stock \i gently\i0  for twenty minutes, then add '
                 r'the \b mussels\b0  and a glass of wine\'85 stir.\par' + '\r\n')
    head = r'{\rtf1\ansi\ansicpg1252\deff0{\fonttbl{\f0\froman Times New Roman;}}\viewkind4\uc1 '
    with open(file, 'w', encoding='ascii', newline='') as out:
        out.write(head)
        out.write(paragraph * (DOCUMENT_MEGABYTES * 1_000_000 // len(paragraph)))
        out.write('}')


def text_speed(tool, folder):
    document = pathlib.Path(folder) / 'large.rtf'
    write_document(document)
    best = 0.0
    for _ in range(3):
        begin = time.perf_counter()
        subprocess.run([tool, 'text', str(document)], stdout=subprocess.DEVNULL, check=True)
        best = max(best, document.stat().st_size / 1e6 / (time.perf_counter() - begin))
    return best


def main():
    build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else 'build/check').resolve()
    bin_ = build / 'bin'
    if not os.environ.get('DISPLAY'):
        os.environ.setdefault('QT_QPA_PLATFORM', 'offscreen')
    print(f'{os.cpu_count()} cores, platform {os.environ.get("QT_QPA_PLATFORM", "xcb")}, {build}')
    with tempfile.TemporaryDirectory() as small, tempfile.TemporaryDirectory() as large, \
            tempfile.TemporaryDirectory() as stock:
        subprocess.run([bin_ / 'larder-large-folder', small, '40', '0'], check=True)
        subprocess.run([bin_ / 'larder-large-folder', large, '20000', '500'], check=True)
        sources = pathlib.Path(__file__).resolve().parent.parent / 'data'
        begin = time.perf_counter()
        subprocess.run([bin_ / 'larder-data', 'build', '--source', sources, '--out', stock],
                       check=True, stdout=subprocess.DEVNULL)
        print(f'larder-data build: {time.perf_counter() - begin:.1f} s')
        for folder in (small, large):  # the ground of the window is part of every start
            shutil.copy(pathlib.Path(stock) / 'Data' / 'RecipeView.jpg',
                        pathlib.Path(folder) / 'Data')
        probe = str(bin_ / 'larder-start-probe')
        empty, full = start_times(probe, large)
        print(f'start to first paint: empty window {empty:.0f} ms, cook-book of 20,500 recipes '
              f'{full:.0f} ms, ratio {full / empty:.2f}')
        before, after = resident_megabytes(probe, small), resident_megabytes(probe, large)
        print(f'resident: 40 recipes {before:.1f} MB, 20,500 recipes {after:.1f} MB, '
              f'difference {after - before:+.1f} MB')
        print(f'larder-data text: {text_speed(str(bin_ / "larder-data"), small):.0f} MB/s')


if __name__ == '__main__':
    main()
