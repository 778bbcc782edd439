# Links between files of the repository, for pages that lie in build/docs/html: headers and pages by the names that they
# have there, everything else where it lies. A page at the root is for who works on the library, and has no page there.
s,\[`?([^]`]*)`?\]\(\.\./src/([^)]*\.h)\),[\1](@ref \2),g
s,\[([^]]*)\]\(\.\./([A-Z]+\.md)\),\1,g
s,\]\(([a-z-]+)\.md\),](@ref md_docs_\1),g
:dash
s,(\(@ref md_docs_[a-z_]*)-,\1_,
t dash
s,\]\(\.\./,](../../../,g
s,\]\((ztCAD-[^)]*\.xsd)\),](../../../docs/\1),g
