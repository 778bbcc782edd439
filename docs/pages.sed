# Rewrites links for the pages in build/docs/html: headers and pages of docs/ link to their Doxygen pages, other files to their
# place in the repository. Pages at the root of the repository are not part of the Doxygen pages; links to them become text.
s,\[`?([^]`]*)`?\]\(\.\./src/([^)]*\.h)\),[\1](@ref \2),g
s,\[([^]]*)\]\(\.\./([A-Z]+\.md)\),\1,g
s,\]\(([a-z-]+)\.md\),](@ref md_docs_\1),g
:dash
s,(\(@ref md_docs_[a-z_]*)-,\1_,
t dash
s,\]\(\.\./,](../../../,g
s,\]\((ztCAD-[^)]*\.xsd)\),](../../../docs/\1),g
