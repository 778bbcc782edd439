#include <gtest/gtest.h>
#include <array>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "host.h"

// Threads of a host that use the library alternately, never at the same time, and hand objects over to each
// other; and threads that read one element at the same time.

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

/// Runs `work(thread)` in some threads at the same time, as far as possible.
template <typename Work>
void inThreads(std::size_t count, Work&& work) {
  std::mutex mutex;
  std::condition_variable allAreThere;
  std::size_t waiting = count;
  std::vector<std::thread> threads;
  for (std::size_t thread = 0; thread < count; ++thread) {
    threads.emplace_back([&, thread] {
      {
        std::unique_lock<std::mutex> lock(mutex);
        if (--waiting == 0) allAreThere.notify_all();
        allAreThere.wait(lock, [&] { return waiting == 0; });
      }
      work(thread);
    });
  }
  for (std::thread& thread : threads)
    thread.join();
}

/// What one thread sees of an element.
struct Seen {
  const ztCAD_gAttr* attributes = nullptr;
  const ztCAD_gShowable* showable = nullptr;
  std::string values;
};

Seen seenOf(const ztCAD_Point& point, bool showableFirst) {
  const ztCAD_cmnProperty& property = point.property();
  Seen seen;
  seen.values =
      point.name().toStdString() + property.comment().toStdString() + property.inform().toStdString();
  if (showableFirst) seen.showable = &property.showable();
  seen.attributes = &property.attributes();
  seen.showable = &property.showable();
  seen.values += seen.attributes->name().toStdString() + seen.attributes->comment().toStdString() +
                 std::to_string(seen.showable->color().red()) + std::to_string(property.color().blue()) +
                 (property.hasLCS() ? " system" : "") + point.method().method().toStdString();
  return seen;
}

TEST(Threads, CanReadOneElementAtTheSameTime) {
  constexpr std::size_t count = 4;
  const std::string points = R"(<GMD><point name="A" center="1, 2, 3;"/>
    <point name="A point with a long name" comment="c" center="1, 2, 3;" color="RGB, 1, 2, 3"/>
    <point name="B" inform="i" center="1" LCS="CS, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0" color="RGB, 999, 2, 3"/></GMD>)";
  for (int round = 0; round < 100; ++round) {
    const Document document = parse(points).document;
    const auto& elements = *ztCAD_getPoints(document.get());
    ASSERT_EQ(elements.size(), 3U);
    std::array<std::vector<Seen>, count> seen;
    inThreads(count, [&](std::size_t thread) {
      for (const ztCAD_Point& point : elements)
        seen[thread].push_back(seenOf(point, thread % 2 == 0));
    });
    std::size_t place = 0;
    for (const ztCAD_Point& point : elements) {
      for (const std::vector<Seen>& byOne : seen) {
        EXPECT_EQ(byOne[place].attributes, &point.property().attributes()) << "they are made once";
        EXPECT_EQ(byOne[place].showable, &point.property().showable()) << "they are made once";
        EXPECT_EQ(byOne[place].values, seen[0][place].values);
      }
      ++place;
    }
    EXPECT_EQ(seen[0][0].values, "AA00pointXYZ");
    EXPECT_EQ(seen[0][1].values, "A point with a long namecA point with a long namec13pointXYZ");
    EXPECT_EQ(seen[0][2].values, "BiB9993 systempointXYZ");
  }
}

// Objects that are made in one thread are seen whole in the others, also by those that copy the element.
TEST(Threads, CanCopyAnElementThatOthersRead) {
  constexpr std::size_t count = 4;
  for (int round = 0; round < 100; ++round) {
    const Document document = parse(someXml).document;
    const ztCAD_Point& point = ztCAD_getPoints(document.get())->front();
    inThreads(count, [&point](std::size_t thread) {
      if (thread % 2 == 0) {
        EXPECT_EQ(point.property().attributes().name(), QLatin1String("A"));
        return;
      }
      const ztCAD_Point copy = point;
      EXPECT_EQ(copy.name(), QLatin1String("A"));
      EXPECT_EQ(copy.property().attributes().name(), QLatin1String("A"));
      EXPECT_NE(&copy.property().attributes(), &point.property().attributes());
    });
  }
}

}  // namespace
