#!/usr/bin/python3
"""Whole-process comparison of zd_bench with the peer references, run alternately in one go so
that they share the machine's load; then the in-process stage figures and run32."""
import argparse, os, re, resource, statistics, subprocess, sys, time

ap = argparse.ArgumentParser()
ap.add_argument("--bench", required=True)
ap.add_argument("--kit", required=True)
ap.add_argument("--inputs", required=True)
ap.add_argument("--out", required=True)
ap.add_argument("--reps", type=int, default=5)
a = ap.parse_args()
os.makedirs(a.out, exist_ok=True)
win, bg = f"{a.inputs}/window-light.png", f"{a.inputs}/bg.jpg"

def timed(cmd, env=None):
    """Wall seconds and CPU seconds (user + system of the children) of one process."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    t = time.perf_counter()
    r = subprocess.run(cmd, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, env=env)
    wall = time.perf_counter() - t
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    if r.returncode != 0:
        sys.exit(f"failed: {' '.join(cmd)}\n{r.stderr}")
    cpu = (after.ru_utime - before.ru_utime) + (after.ru_stime - before.ru_stime)
    return wall, cpu, r.stdout

vips_env = dict(os.environ, OPTS="[filter=all]")
contenders = {
    "zephyrdock": ([a.bench, "one", win, bg, f"{a.out}/zd.png"], None),
    "imagemagick": (["bash", f"{a.kit}/ref/im.sh", win, bg, f"{a.out}/im.png", "full"], None),
    "vips": (["bash", f"{a.kit}/ref/vips.sh", win, bg, f"{a.out}/vips.png", "full"], vips_env),
    "pillow": (["/usr/bin/python3", f"{a.kit}/ref/pil.py", win, bg, f"{a.out}/pil.png", "full"], None),
}
walls = {k: [] for k in contenders}
cpus = {k: [] for k in contenders}
ours_lines = []
print(f"== one: a fresh process composes and writes one 2880x1800 PNG ({a.reps} rounds, alternating)")
for rep in range(a.reps):
    for name, (cmd, env) in contenders.items():
        w, c, out = timed(cmd, env)
        walls[name].append(w)
        cpus[name].append(c)
        if name == "zephyrdock":
            ours_lines.append(out.strip())
for name in contenders:
    size = os.path.getsize(f"{a.out}/{ {'zephyrdock':'zd','imagemagick':'im','vips':'vips','pillow':'pil'}[name] }.png")
    print(f"  {name:12s} wall {statistics.median(walls[name])*1000:7.0f} ms   cpu {statistics.median(cpus[name])*1000:7.0f} ms   {size} bytes")
for peer in ("imagemagick", "vips", "pillow"):
    wr = statistics.median([o / p for o, p in zip(walls["zephyrdock"], walls[peer])])
    cr = statistics.median([o / p for o, p in zip(cpus["zephyrdock"], cpus[peer])])
    print(f"  ratio zephyrdock/{peer:11s} wall {wr:.3f}x   cpu {cr:.3f}x")
print("  our stages (last round):", ours_lines[-1])

print("== size guard and PNG settings")
_, _, out = timed([a.bench, "png", f"{a.out}/zd.png"])
print(out.rstrip())

print("== in-process stages")
_, _, out = timed([a.bench, "stages", a.inputs, str(max(a.reps, 5))])
print(out.rstrip())

print("== run32: 16 languages x Light and Dark through saveAll, plus 32 preview tiles")
w, c, out = timed([a.bench, "run32", a.inputs, f"{a.out}/run32"])
print(out.rstrip())
print(f"  whole process wall {w:.2f} s, cpu {c:.2f} s")

print("== end of a run: 32 captures of 2880x1800 held until the end, then pipelined (a process each)")
pipeline_bench = os.path.join(os.path.dirname(a.bench), "zd_bench_pipeline")
for mode in ("hold", "pipelined"):
    _, _, out = timed([pipeline_bench, a.inputs, f"{a.out}/pipeline-{mode}", mode])
    print("  " + out.strip())
