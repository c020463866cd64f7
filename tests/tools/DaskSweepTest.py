"""The Dask driver on a local cluster of two workers writes the very file a
single-machine sweep writes. Runs with Debian's /usr/bin/python3; a missing
python3-distributed is a failure, not a skip."""

import os
import subprocess
import sys
import tempfile

orvel_cli, source_dir = sys.argv[1], sys.argv[2]
import distributed  # noqa: F401  (fails the test when the package is missing)

SCRIPT = b"config.trade.max.hold.day,$hold\nbuy.close,-1<ma,$n,-1\nbuy.close,0>ma,$n,0\nsale.close,0<ma,10,0"

with tempfile.TemporaryDirectory() as folder:
    script = os.path.join(folder, "s.script")
    with open(script, "wb") as file:
        file.write(SCRIPT)
    grid = ["--data", os.path.join(source_dir, "data"), "--vary", "n=3:9:2", "--vary", "hold=2,4,6"]
    alone = subprocess.run([orvel_cli, "sweep", script, "--out", "alone.csv"] + grid, cwd=folder)
    assert alone.returncode == 0, "the single sweep failed"
    driver = [sys.executable, os.path.join(source_dir, "tools", "orvel-dask-sweep"), "--local", "2",
              "--shards", "3", "--orvel-cli", orvel_cli, script, "--out", "dask.csv", "--top", "3"] + grid
    shown = subprocess.run(driver, cwd=folder, stdout=subprocess.PIPE, timeout=240)
    assert shown.returncode == 0, "the driver failed with %d" % shown.returncode
    with open(os.path.join(folder, "alone.csv"), "rb") as a, open(os.path.join(folder, "dask.csv"), "rb") as b:
        single, merged = a.read(), b.read()
    assert single.count(b"\n") == 13, single
    assert merged == single, "the merged file differs:\n%s\n%s" % (merged, single)
    assert len(shown.stdout.decode("utf-8").splitlines()) == 4, shown.stdout
print("dask sweep: merged file equals the single-machine sweep")
