#!/usr/bin/python3
"""Runs the benchmarks and the growth measurements and writes docs/performance.md with a plot
of the growth (docs/performance-growth.png). Called by `make bench`:

    scripts/bench-report.py BUILD_DIR DOCS_DIR

Demo databases are kept in BUILD_DIR/bench-data (the demo data is the same for the same size),
so a second run only measures. CP_BENCH_SIZES="10000 100000" measures fewer sizes."""
import datetime
import json
import math
import os
import platform
import shutil
import sqlite3
import statistics
import subprocess
import sys
import time

build, docs = sys.argv[1], sys.argv[2]
tool = os.path.join(build, 'cli', 'criteriopredios')
data = os.path.join(build, 'bench-data')
sizes = [int(s) for s in os.environ.get('CP_BENCH_SIZES', '10000 100000 1000000').split()]
os.makedirs(data, exist_ok=True)


def say(text):
    print(text, file=sys.stderr, flush=True)


def run(cmd, **kw):
    return subprocess.run(cmd, check=True, stdout=subprocess.PIPE, text=True, **kw).stdout


def seconds(cmd):
    start = time.perf_counter()
    subprocess.run(cmd, check=True, stdout=subprocess.DEVNULL)
    return time.perf_counter() - start


def schema_of(path):
    db = sqlite3.connect(path)
    try:
        return sorted(r[0] for r in db.execute('SELECT sql FROM sqlite_master WHERE sql IS NOT NULL'))
    finally:
        db.close()


def current_schema():
    """The schema init-db writes today: a kept database made by an older build is made again."""
    empty = os.path.join(data, 'schema.db')
    if os.path.exists(empty):
        os.remove(empty)
    run([tool, 'init-db', '--db', empty])
    return schema_of(empty)


SCHEMA = current_schema()


def demo(size):
    path = os.path.join(data, f'demo-{size}.db')
    if os.path.exists(path) and schema_of(path) != SCHEMA:
        say(f'the kept demo database of {size} properties has an older schema: made again')
        os.remove(path)
        stripped = os.path.join(data, f'demo-{size}-sin-indices.db')
        if os.path.exists(stripped):
            os.remove(stripped)
    if not os.path.exists(path):
        say(f'creating the demo database of {size} properties')
        partial = path + '.partial'
        if os.path.exists(partial):
            os.remove(partial)
        run([tool, 'init-db', '--db', partial, '--demo', '--size', str(size)])
        os.rename(partial, path)
    return path


def without_indexes(size):
    """The same data with only the primary keys: every CREATE INDEX of the schema dropped."""
    path = os.path.join(data, f'demo-{size}-sin-indices.db')
    if not os.path.exists(path):
        partial = path + '.partial'
        shutil.copyfile(demo(size), partial)
        db = sqlite3.connect(partial)
        names = [r[0] for r in db.execute(
            "SELECT name FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL")]
        for name in names:
            db.execute(f'DROP INDEX "{name}"')
        db.execute('ANALYZE')
        db.commit()
        db.execute('VACUUM')
        db.close()
        os.rename(partial, path)
    return path


def benchmarks(program, env=None):
    out = os.path.join(data, os.path.basename(program) + '.json')
    subprocess.run([program, '--benchmark_format=console', f'--benchmark_out={out}',
                    '--benchmark_out_format=json'], check=True, stdout=sys.stderr,
                   env={**os.environ, **(env or {})})
    with open(out) as f:
        return {b['name'].split('/')[0]: b for b in json.load(f)['benchmarks']}


SELECTION = ['--entity', 'Inm. Propios', '--set', 'txtPrecio(0)=100000',
             '--set', 'txtPrecio(1)=300000', '--set', 'dtpAlta(0)=2024-03-01']


def growth_row(db, size):
    demands = 200 if size < 1000000 else 100
    properties = 100 if size < 1000000 else 40
    per_demand = seconds([tool, 'match', '--db', db, '--limit', str(demands), '--jobs', '1'])
    per_property = seconds([tool, 'match', '--db', db, '--from', 'Inm. Propios',
                            '--limit', str(properties), '--jobs', '1'])
    selecting = [tool, 'query', 'where', '--db', db] + SELECTION
    seconds(selecting)  # the file into the page cache first, as for the others
    selection = statistics.median(seconds(selecting) for _ in range(5))
    return {'demand_ms': 1000 * per_demand / demands,
            'property_ms': 1000 * per_property / properties,
            'selection_ms': 1000 * selection}


def exponent(rows, key, first=0):
    """The power p in cost ~ size^p from rows[first] to the largest size (1 = linear)."""
    small, large = rows[first], rows[-1]
    return math.log(large[1][key] / small[1][key]) / math.log(large[0] / small[0])


def shape(p):
    return 'linear' if 0.85 <= p <= 1.15 else ('below linear' if p < 0.85 else 'above linear')


def machine():
    cpu = next((line.split(':', 1)[1].strip() for line in open('/proc/cpuinfo')
                if line.startswith('model name')), platform.processor())
    memory = next(int(line.split()[1]) for line in open('/proc/meminfo')
                  if line.startswith('MemTotal')) / 1024 / 1024
    try:
        commit = run(['git', 'rev-parse', '--short', 'HEAD']).strip()
    except (subprocess.CalledProcessError, FileNotFoundError):
        commit = '?'
    return {'cpu': cpu, 'cores': os.cpu_count(), 'memory': f'{memory:.0f} GiB',
            'os': platform.platform(), 'sqlite': sqlite3.sqlite_version,
            'date': datetime.datetime.now().strftime('%Y-%m-%d %H:%M'), 'commit': commit}


say('ratios (bench/cp_bench)')
ratios = benchmarks(os.path.join(build, 'bench', 'cp_bench'))
dialog = benchmarks(os.path.join(build, 'bench', 'cp_bench_dialog'),
                    {'QT_QPA_PLATFORM': 'offscreen', 'CP_BENCH_DIALOG_SIZE': '100000'})
typing = benchmarks(os.path.join(build, 'bench', 'cp_bench_count'),
                    {'QT_QPA_PLATFORM': 'offscreen', 'CP_BENCH_COUNT_SIZE': '100000'})

growth = {'con índices': [], 'sin índices': []}
for size in sizes:
    say(f'growth at {size} properties')
    growth['con índices'].append((size, growth_row(demo(size), size)))
    growth['sin índices'].append((size, growth_row(without_indexes(size), size)))

office = None
if 100000 in sizes:
    say('match: 10,000 demands against 100,000 properties, every core')
    office = seconds([tool, 'match', '--db', demo(100000), '--limit', '10000'])

# ---- the page
m = machine()
goal = {'BM_LikeVsSqliteLike': 1.3, 'BM_MultiValuedLikeVsNative': 1.3,
        'BM_CollatedEqualsVsPlain': 1.2, 'BM_CrossConditionVsNative': 1.2}
what = {
    'BM_LikeVsSqliteLike': "Jet LIKE '*lujo*' against SQLite's LIKE '%lujo%', same column",
    'BM_MultiValuedLikeVsNative': 'multi-valued criterion (= and three LIKE) against the same in '
                                  "SQLite's own = and LIKE",
    'BM_CollatedEqualsVsPlain': 'Jet-collated = against plain = (accented, other case)',
    'BM_CrossConditionVsNative': "a demand's cross-match condition against the native filter",
    'BM_TranslateVsPrepare': 'translating a long condition against preparing its SQL',
    'BM_AccessImport': 'importing the Access fixture against reading it with libmdb alone',
}
lines = ['# Performance', '',
         f"Measured by `make bench` on {m['date']} (commit {m['commit']}): {m['cpu']}, "
         f"{m['cores']} cores, {m['memory']}, {m['os']}, SQLite {m['sqlite']}.", '',
         'Every ratio is the component\'s way against its reference, timed alternately in the '
         'same run (bench/compare.h); 1.0 means no extra cost.', '',
         '## Ratios', '', '| what | ratio | goal |', '|---|---|---|']
for name, b in ratios.items():
    ratio = b.get('ratio')
    if ratio is None:
        continue
    target = goal.get(name)
    mark = '' if target is None else (f'≤ {target} ✓' if ratio <= target else f'≤ {target} ✗')
    lines.append(f"| {what.get(name, name)} | {ratio:.2f}× | {mark} |")
d = dialog['BM_PropertyDialogFirstPaint']
lines += ['', '## The dialog', '',
          f"From `mtdMostrar` to the first paint, the property dialog on the 100,000-property "
          f"database takes **{d['ms']:.1f} ms** (goal: under 150 ms), {d['ratio']:.1f}× a plain "
          'dialog with one label (offscreen platform, mean of 20 showings).', '']
t = typing['BM_KeystrokeWhileCounting']
lines += ['A keystroke in its words box while the running count works on its own thread takes '
          f"**{t['on_ms']:.2f} ms**, {t['ratio']:.1f}× the same keystroke in a window without "
          f"the count ({t['off_ms']:.2f} ms); the count itself is on screen {t['count_ms']:.0f} ms "
          'after the keystroke, its 250 ms pause included (mean of 20).', '']
if office is not None:
    lines += ['## `match` on an office', '',
              f'10,000 demands crossed against 100,000 own properties with one worker per core '
              f"({m['cores']}): **{office:.1f} s** (goal: under 60 s).", '']
lines += ['## Growth', '',
          'Cost of crossing one demand (`match`, one worker), one property against the demands, '
          'and one selection from the command line (`query where`; the process start and the '
          'printing of the rows included: '
          'price range and date of entry), as the database grows. Demands are half the '
          'properties. "sin índices" is the same data with every index but the primary keys '
          'dropped.', '',
          '| properties | indexes | ms per demand | ms per property | ms per selection |',
          '|---|---|---|---|---|']
for label, rows in growth.items():
    for size, r in rows:
        lines.append(f"| {size:,} | {label} | {r['demand_ms']:.1f} | {r['property_ms']:.1f} | "
                     f"{r['selection_ms']:.1f} |")
if len(sizes) >= 2:
    lines += ['', 'Growth exponent p in cost ≈ size^p between two sizes '
              '(1 is linear):', '', '| indexes, sizes | per demand | per property | per selection |',
              '|---|---|---|---|']
    for first in ([0, len(sizes) - 2] if len(sizes) > 2 else [0]):
        for label, rows in growth.items():
            p = [exponent(rows, k, first) for k in ('demand_ms', 'property_ms', 'selection_ms')]
            lines.append(f"| {label}, {rows[first][0]:,} → {rows[-1][0]:,} | " +
                         ' | '.join(f'{x:.2f} ({shape(x)})' for x in p) + ' |')
    lines += ['', 'From 100,000 properties up, every cost grows about linearly with the data '
              '(p from 0.9 to 1.2); below that, the fixed cost of a process and of each record weighs more. A cross-match '
              'reads the whole table it selects from (its conditions are ORs with IS NULL over '
              'many columns, which no index narrows), so indexes change its level little and '
              'its slope not at all. A selection prints every row it selects, a fixed share of '
              'the table, so it grows with the table as well.']
lines += ['', '![growth](performance-growth.png)', '',
          'Prices and surfaces have no index. Debian\'s SQLite is built without range '
          'statistics (STAT4), so the planner takes an index on them for any price range of a '
          'cross-match, however wide, and reads most of the table through it: with those '
          'indexes, crossing 1,000 demands against 100,000 properties took 10.1–12.6 s of CPU '
          'against 5.5–7.2 s without them (measured while the schema was being settled).', '']
os.makedirs(docs, exist_ok=True)
with open(os.path.join(docs, 'performance.md'), 'w') as f:
    f.write('\n'.join(lines))

# ---- the plot
points = os.path.join(data, 'growth.dat')
with open(points, 'w') as f:
    for label, rows in growth.items():
        f.write(f'# {label}\n')
        for size, r in rows:
            f.write(f"{size} {r['demand_ms']} {r['property_ms']} {r['selection_ms']}\n")
        f.write('\n\n')
if shutil.which('gnuplot'):
    script = f'''set terminal pngcairo size 900,560 font "DejaVu Sans,10"
set output "{os.path.join(docs, 'performance-growth.png')}"
set logscale xy
set xlabel "inmuebles propios"
set ylabel "ms"
set key left top
set grid
plot for [i=0:1] "{points}" index i using 1:2 with linespoints title (i==0 ? "por demanda, con índices" : "por demanda, sin índices"), \\
     for [i=0:1] "{points}" index i using 1:3 with linespoints title (i==0 ? "por inmueble, con índices" : "por inmueble, sin índices"), \\
     for [i=0:1] "{points}" index i using 1:4 with linespoints title (i==0 ? "por selección, con índices" : "por selección, sin índices")
'''
    subprocess.run(['gnuplot'], input=script, text=True, check=True)
else:
    say('gnuplot is missing: no plot (scripts/install-deps.sh bench installs it)')
print(os.path.join(docs, 'performance.md'))
