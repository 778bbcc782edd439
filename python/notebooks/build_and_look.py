# %% [markdown]
# # Build a document and look at it
#
# A bracket: a plate with four holes marked by points, and two posts that place one template.

# %%
import numpy as np

import ztcad


def box(size, origin=(0.0, 0.0, 0.0)):
    """Vertices and faces of a box, wound outwards."""
    corners = np.array([(x, y, z) for x in (0, 1) for y in (0, 1) for z in (0, 1)], float)
    faces = [
        (0, 1, 3), (0, 3, 2), (4, 6, 7), (4, 7, 5), (0, 4, 5), (0, 5, 1),
        (2, 3, 7), (2, 7, 6), (0, 2, 6), (0, 6, 4), (1, 5, 7), (1, 7, 3),
    ]  # fmt: skip
    return np.asarray(origin) + corners * size, faces


document = ztcad.Document("a bracket")

# %% [markdown]
# Elements are made by the containers of the document. Points are given as one array.

# %%
vertices, faces = box((80, 40, 5))
plate = document.solids.add("plate", vertices=vertices, faces=faces, color=(160, 170, 180))

holes = np.array([(x, y, 5) for x in (10, 70) for y in (10, 30)], float)
document.points.add_many(holes, names=[f"hole_{i}" for i in range(len(holes))])
document.points.centers

# %% [markdown]
# A template is placed by references: origin, x axis, y axis, z axis.

# %%
vertices, faces = box((4, 4, 30))
post = document.template_solids.add("post", vertices=vertices, faces=faces)
for x in (20, 56):
    origin_and_axes = [(x, 18, 5), (1, 0, 0), (0, 1, 0), (0, 0, 1)]
    document.solid_references.add(f"post_at_{x}", template=post, placement=origin_and_axes)

# %% [markdown]
# The scene has everything where it is. In a notebook, `document` alone shows the page of the viewer.

# %%
scene = document.scene()
print(document)
for item in scene:
    print(f"{item.path:28} {item.name:12} {len(item.vertices)} vertices")
print("bounds:", scene.bounds.tolist())

# %%
assert document.check().ok
document.save("bracket.xml")
document
