#include "vocabulary.h"

#include "process_object.h"

namespace ztcad {

namespace {
ProcessObject<Vocabulary> vocabulary;
}

const Vocabulary& words() { return vocabulary.get(); }

void releaseWords() { vocabulary.release(); }

}  // namespace ztcad
