# Filters a header for Doxygen. Lines are emptied, not removed, to keep the line numbers of warnings correct.

# instances of a class template are not classes of their own
s/^extern template .*//

# defaulted and deleted members need no documentation; one that has a comment is kept
\,^ *///,{
  :next
  n
  \,^ *///,b next
  b
}
s/.*= (default|delete);$//
