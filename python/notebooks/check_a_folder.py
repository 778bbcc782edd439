# %% [markdown]
# # Check a folder of documents
#
# Which documents have errors, and which errors are the most frequent?

# %%
from collections import Counter
from pathlib import Path

import numpy as np

import ztcad

# %% [markdown]
# Some documents to check: one is sound, one has a point without a centre, one has an open mesh.

# %%
folder = Path("documents")
folder.mkdir(exist_ok=True)

corners = np.array([(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)], float)
faces = np.array([(0, 2, 1), (0, 1, 3), (0, 3, 2), (1, 2, 3)])

with ztcad.Document() as document:
    document.solids.add("part", vertices=corners, faces=faces)
    document.save(folder / "sound.xml")
    document.points.add("hinge")
    document.save(folder / "no_centre.xml")
with ztcad.Document() as document:
    document.solids.add("part", vertices=corners, faces=faces[:3])
    document.save(folder / "open.xml")

# %% [markdown]
# `ztcad.check` returns what the reader says about the text, and what is wrong with meshes, references and
# mass data, each with its place.

# %%
reports = {path.name: ztcad.check(path) for path in sorted(folder.glob("*.xml"))}
for name, findings in reports.items():
    print(f"{name}: {'sound' if findings.ok else 'has errors'}")
    for finding in findings:
        print(f"  {finding.line}:{finding.column} {finding.severity}: {finding.message}")

# %%
counts = Counter(finding.rule for findings in reports.values() for finding in findings)
for rule, count in counts.most_common():
    print(f"{count} x {rule}: {ztcad.rules()[rule].sentence}")

# %%
assert [name for name, findings in reports.items() if not findings.ok] == ["no_centre.xml"]
assert counts["open-edge"] == 1
