#pragma once

/// Makes allocations fail: the test program replaces `operator new`, which the library uses too. Allocations
/// made by Qt's own code always succeed, because Qt does not survive every failure.
class FailingMemory {
 public:
  enum class Mode {
    Once,        ///< one allocation fails, later ones succeed again
    Permanently  ///< that allocation and all later ones fail
  };

  /// While this object lives, the allocation after `granted` successful ones fails. Only one object may exist
  /// at a time.
  FailingMemory(long granted, Mode mode);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  /// Whether an allocation has failed since construction.
  bool hasFailed() const;
};

/// Prints a line to standard error when a memory block that contains one of these addresses is freed; both
/// may be null. Used for the end of the process, when nothing can be queried any more.
void printWhenReleased(const void* document, const void* element);
