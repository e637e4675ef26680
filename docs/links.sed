# Doxygen resolves links to pages, but not links to sections of pages.  These become references.
s/](\([^)]*\)\.md#\([a-z_]*\))/](@ref \2)/g
