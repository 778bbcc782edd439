"""Uses the installed package ztcad: checks, builds, saves and converts documents.

    use_python_package.py <document with faults> <folder of the libraries> <version> [whole]

`whole`: everything, the program included, must come from the folder.
"""

import os
import sys
import tempfile
from pathlib import Path

import numpy as np

import ztcad
from ztcad import _program, batch

rig, folder, version, *whole = sys.argv[1:]
assert ztcad.__version__ == version, ztcad.__version__
assert ztcad.check(rig).errors[0].rule == "missing-centre"
os.chdir(tempfile.mkdtemp(prefix="ztcad"))
with ztcad.Document() as document:
    corners = np.array([(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)], float)
    solid = document.solids.add("s", vertices=corners, faces=[(0, 2, 1), (0, 1, 3), (0, 3, 2), (1, 2, 3)])
    assert abs(solid.mass_properties(6).mass - 1) < 1e-12
    document.save("solid.xml")
loaded = {line.split()[-1] for line in Path("/proc/self/maps").read_text().splitlines() if "/" in line}
ours = [path for path in loaded if "libztCAD" in path or "libQt" in path]
assert len([path for path in ours if "libztCAD" in path]) == 2, ours
assert all(path.startswith(folder) for path in ours if "libztCAD" in path), ours
if whole:
    assert all(path.startswith(folder) for path in ours), ours
    assert _program.find_program().startswith(folder)
    assert batch.find_program() == _program.find_program()
    assert [finding.rule for finding in next(batch.check(rig)).findings][0] == "missing-centre"
    ztcad.convert("solid.xml", "solid.stl")
    assert Path("solid.stl").stat().st_size == 84 + 4 * 50
print(f"ztcad {ztcad.__version__} works")
