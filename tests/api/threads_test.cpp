#include <gtest/gtest.h>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "host.h"

// Threads of a host that use the library alternately, never at the same time, and hand objects over to each
// other.

namespace {

/// Makes two threads run alternately.
class Turns {
 public:
  /// Waits for this thread's turn, runs `work` and passes the turn on.
  template <typename Work>
  void take(int mine, Work&& work) {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [&] { return m_next == mine; });
    work();
    m_next = 1 - mine;
    m_changed.notify_all();
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  int m_next = 0;
};

const std::string someXml = R"(<GMD><point name="A" center="1, 2, 3;"/>
  <structure name="S" LCS=""><structure name="T"/><solid name="B" method="triangulation"><vertices>
    0, 0, 0; 1, 0, 0; 0, 1, 0; 0, 0, 1;</vertices><faces>0, 2, 1; 0, 1, 3; 0, 3, 2; 1, 2, 3;</faces></solid>
  </structure></GMD>)";

TEST(Threads, CanCreateSaveAndDeleteOneDocumentInTurn) {
  const TemporaryFiles files;
  const std::string file = files.path("document.xml");
  ztCAD_GMDDocument* document = nullptr;
  std::thread([&] {
    document = crtGMDDocument("of the first thread");
    EXPECT_FALSE(addPointToDoc(pointNamed("A"), document));
  }).join();
  std::thread([&] { SaveGMDDocument(document, file); }).join();
  std::thread([&] {
    const Loaded loaded = loadFile(file);
    EXPECT_EQ(loaded.code, 0);
    EXPECT_EQ(namesIn(ztCAD_getPoints(loaded.document.get())), Names{"A"});
    DeleteGMDDoc(document);
  }).join();
}

TEST(Threads, CanAlternate) {
  const TemporaryFiles files;
  Turns turns;
  constexpr std::size_t rounds = 50;
  Document shared = newDocument();
  const auto work = [&](int mine) {
    Document own;
    for (std::size_t round = 0; round < rounds; ++round) {
      turns.take(mine, [&] { own = parse(someXml).document; });
      turns.take(mine, [&] { EXPECT_FALSE(addPointToDoc(pointNamed("P"), shared.get())); });
      turns.take(mine, [&] {
        EXPECT_FALSE(addStructureToDoc(&ztCAD_getStructures(own.get())->front(), own.get()));
        EXPECT_TRUE(checkGMDDocument(own.get()));
      });
      turns.take(mine, [&] {
        SaveGMDDocument(shared.get(), files.path("shared.xml"));
        EXPECT_EQ(loadFile(files.path("shared.xml")).code, 0);
      });
    }
    turns.take(mine, [&] { own.reset(); });
  };
  std::thread first(work, 0);
  std::thread second(work, 1);
  first.join();
  second.join();
  EXPECT_EQ(ztCAD_getPoints(shared.get())->size(), 2 * rounds);
}

}  // namespace
