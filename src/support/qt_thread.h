#pragma once

#include <QThread>

namespace ztcad {

/// Makes the data that Qt keeps for the calling thread, or throws std::bad_alloc. Must precede whatever may
/// create the thread's first QObject, as a message of Qt does, which reads its rules from a file: QObject's
/// constructor crashes if there is no memory for this data. (Qt's own function still crashes for one of the
/// four allocations.)
inline void makeQtThreadData() { static_cast<void>(QThread::currentThread()); }

}  // namespace ztcad
