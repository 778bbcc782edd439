# %% [markdown]
# # Mass properties of an assembly
#
# Closed meshes have mass properties by exact integration. Declared data of an element replaces what its
# content would give.

# %%
import numpy as np

import ztcad

corners = np.array([(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)], float)
faces = np.array([(0, 2, 1), (0, 1, 3), (0, 3, 2), (1, 2, 3)])
steel = 7.85e-6  # kg/mm3

document = ztcad.Document("an assembly, in millimetres and kilograms")
wedge = document.template_solids.add("wedge", vertices=100 * corners, faces=faces)
for number in range(3):
    placement = [(200 * number, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)]
    document.solid_references.add(f"wedge_{number}", template=wedge, placement=placement)
document.spheres.add("ball", center=(0, 0, 300), radius=20)

# %% [markdown]
# One solid: the inertia matrix is about the centre of mass, in the solid's own frame.

# %%
properties = wedge.mass_properties(density=steel)
print(f"volume {properties.volume:.1f} mm3, mass {properties.mass:.4f} kg")
print("centre", properties.center)
print(properties.inertia)

# %% [markdown]
# The whole: templates count where they are placed.

# %%
table = document.mass_table(density=steel)
for row in table:
    mass = row.combined.mass if row.combined else None
    print(f"{row.path:24} {row.name:10} {'template' if row.is_template else '':9} {mass}")
total = table.total.combined
print(f"total mass {total.mass:.4f} kg, centre {total.center.round(3)}")

# %% [markdown]
# Computed data can be written into the document, as declared data.

# %%
wedge.mass_data = properties.to_mass_data()
document.save("assembly.xml")
expected = 3 * properties.mass + steel * 4 / 3 * np.pi * 20**3
assert np.isclose(total.mass, expected, rtol=1e-12)
