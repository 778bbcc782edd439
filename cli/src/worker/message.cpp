#include "message.h"

#include <cstring>
#include <stdexcept>

namespace cli {

namespace {

class Writer {
 public:
  Writer& number(std::int64_t value) {
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    m_bytes.append(bytes, sizeof value);
    return *this;
  }
  Writer& text(std::string_view value) {
    number(static_cast<std::int64_t>(value.size()));
    m_bytes.append(value);
    return *this;
  }
  Writer& optionalText(const std::optional<std::string>& value) {
    number(value.has_value());
    return value ? text(*value) : *this;
  }
  Writer& place(const Place& value) { return number(value.line).number(value.column).number(value.offset); }

  std::string take() { return std::move(m_bytes); }

 private:
  std::string m_bytes;
};

/// Throws if the message ends too early.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : m_bytes(bytes) {}

  std::int64_t number() {
    std::int64_t value = 0;
    std::memcpy(&value, next(sizeof value).data(), sizeof value);
    return value;
  }
  std::string text() { return std::string(next(static_cast<std::size_t>(number()))); }
  std::optional<std::string> optionalText() {
    if (number() == 0) return std::nullopt;
    return text();
  }
  Place place() {
    Place value;
    value.line = number();
    value.column = number();
    value.offset = number();
    return value;
  }
  bool atEnd() const { return m_bytes.empty(); }

 private:
  std::string_view next(std::size_t size) {
    if (size > m_bytes.size()) throw std::out_of_range("message");
    const std::string_view part = m_bytes.substr(0, size);
    m_bytes.remove_prefix(size);
    return part;
  }

  std::string_view m_bytes;
};

void write(Writer& writer, const Finding& finding) {
  writer.number(static_cast<std::int64_t>(finding.severity)).text(finding.rule).text(finding.message);
  writer.place(finding.place).text(finding.path).optionalText(finding.attribute);
  writer.text(finding.kind).optionalText(finding.name).number(finding.count);
  writer.number(static_cast<std::int64_t>(finding.places.size()));
  for (const Place& place : finding.places)
    writer.place(place);
}

Finding readFinding(Reader& reader) {
  Finding finding;
  finding.severity = static_cast<Severity>(reader.number());
  finding.rule = reader.text();
  finding.message = reader.text();
  finding.place = reader.place();
  finding.path = reader.text();
  finding.attribute = reader.optionalText();
  finding.kind = reader.text();
  finding.name = reader.optionalText();
  finding.count = reader.number();
  for (std::int64_t places = reader.number(); places > 0; --places)
    finding.places.push_back(reader.place());
  return finding;
}

}  // namespace

std::string framed(std::string_view message) {
  const std::uint64_t length = message.size();
  std::string frame(frameHeaderSize, '\0');
  std::memcpy(frame.data(), &length, sizeof length);
  return frame.append(message);
}

std::uint64_t lengthIn(const char* header) {
  std::uint64_t length = 0;
  std::memcpy(&length, header, sizeof length);
  return length;
}

std::string toMessage(const ReviewRequest& request) {
  return Writer().text(request.file).text(request.folder).number(request.inspects ? 1 : 0).take();
}

std::optional<ReviewRequest> requestFrom(std::string_view message) {
  try {
    Reader reader(message);
    ReviewRequest request;
    request.file = reader.text();
    request.folder = reader.text();
    request.inspects = reader.number() != 0;
    if (reader.atEnd()) return request;
  } catch (const std::out_of_range&) {
    // as below
  }
  return std::nullopt;
}

std::string toMessage(const Review& review) {
  Writer writer;
  writer.text(review.problem).number(review.code).number(review.fault);
  writer.number(static_cast<std::int64_t>(review.findings.size()));
  for (const Finding& finding : review.findings)
    write(writer, finding);
  return writer.take();
}

std::optional<Review> reviewFrom(std::string_view message) {
  try {
    Reader reader(message);
    Review review;
    review.problem = reader.text();
    review.code = static_cast<std::int32_t>(reader.number());
    review.fault = reader.number() != 0;
    for (std::int64_t findings = reader.number(); findings > 0; --findings)
      review.findings.push_back(readFinding(reader));
    if (reader.atEnd()) return review;
  } catch (const std::out_of_range&) {
    // as below
  }
  return std::nullopt;
}

}  // namespace cli
