#include <gtest/gtest.h>
#include <worker/message.h>

namespace {

using cli::Finding;
using cli::Review;
using cli::Severity;

Review sample() {
  Finding plain;
  plain.severity = Severity::Note;
  plain.rule = "comment-dropped";
  plain.message = "Комментарий";
  plain.place = {3, 4, 50};
  Finding full = plain;
  full.severity = Severity::Error;
  full.path = "/GMD/point[2]/@center";
  full.attribute = "center";
  full.kind = "point";
  full.name = "";
  full.count = 1000000;
  full.places = {{3, 4, 50}, {5, 6, 70}};
  Review review;
  review.code = 120;
  review.fault = true;
  review.findings = {plain, full};
  return review;
}

}  // namespace

TEST(Message, BringsAReviewUnchanged) {
  const std::string message = cli::toMessage(sample());
  const auto review = cli::reviewFrom(message);
  ASSERT_TRUE(review);
  EXPECT_EQ(cli::toMessage(*review), message);
  EXPECT_EQ(review->code, 120);
  EXPECT_TRUE(review->fault);
  ASSERT_EQ(review->findings.size(), 2U);
  EXPECT_EQ(review->findings[0].severity, Severity::Note);
  EXPECT_EQ(review->findings[0].message, "Комментарий");
  EXPECT_FALSE(review->findings[0].attribute);
  EXPECT_FALSE(review->findings[0].name);
  EXPECT_EQ(review->findings[1].attribute, "center");
  EXPECT_EQ(review->findings[1].name, "");
  EXPECT_EQ(review->findings[1].count, 1000000);
  EXPECT_EQ(review->findings[1].places.at(1).offset, 70);
}

TEST(Message, BringsARequestUnchanged) {
  const std::string message = cli::toMessage(cli::ReviewRequest{"ось.xml", "чертежи", false});
  const auto request = cli::requestFrom(message);
  ASSERT_TRUE(request);
  EXPECT_EQ(request->file, "ось.xml");
  EXPECT_EQ(request->folder, "чертежи");
  EXPECT_FALSE(request->inspects);
  for (std::size_t size = 0; size < message.size(); ++size)
    EXPECT_FALSE(cli::requestFrom(std::string_view(message).substr(0, size))) << size;
}

TEST(Message, ThatIsDamagedIsNoReview) {
  const std::string message = cli::toMessage(sample());
  for (std::size_t size = 0; size < message.size(); ++size)
    EXPECT_FALSE(cli::reviewFrom(std::string_view(message).substr(0, size))) << size;
  EXPECT_FALSE(cli::reviewFrom(message + "x"));
}

TEST(Message, HasItsLengthBeforeIt) {
  const std::string frame = cli::framed("four");
  ASSERT_EQ(frame.size(), cli::frameHeaderSize + 4);
  EXPECT_EQ(cli::lengthIn(frame.data()), 4U);
  EXPECT_EQ(frame.substr(cli::frameHeaderSize), "four");
}
