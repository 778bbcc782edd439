#include "vocabulary.h"

namespace ztcad {

ProcessObject<Vocabulary> vocabulary;

void releaseWords() { vocabulary.release(); }

}  // namespace ztcad
