# What Doxygen sees of a header. Lines are emptied, not removed, so that its warnings name the right ones.

# the instances of a template are no classes of their own
s/^extern template .*//

# what the compiler makes needs no words; with a comment before it, it stays and has them
\,^ *///,{
  :next
  n
  \,^ *///,b next
  b
}
s/.*= (default|delete);$//
