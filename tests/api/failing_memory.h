#pragma once

/// Memory that can be made to run out: this test program brings its own `operator new`, which the library uses too.
/// What Qt's own code asks for is always given, because Qt does not survive every refusal.
class FailingMemory {
 public:
  enum class Mode {
    Once,    ///< one piece of memory is refused, the next ones are given again
    ForGood  ///< that piece and every later one are refused
  };

  /// Refuses the piece that is asked for after `granted` others, while this object lives. One at a time.
  FailingMemory(long granted, Mode mode);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  /// Whether anything was refused so far.
  bool hasRefused() const;
};

/// Tells on the standard error stream when a block of memory that holds one of these addresses is given back; both may
/// be null. For the end of the process, after which nobody can ask any more.
void tellWhenReleased(const void* document, const void* element);
