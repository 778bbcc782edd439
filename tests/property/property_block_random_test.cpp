#include <gtest/gtest.h>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "differential/dice.h"
#include "node_text.h"
#include "property/property_block.h"
#include "random_seed.h"
#include "xml/plain_xml.h"

// Random series of calls of property blocks, beside objects that hold the same values as members.

namespace {

/// The values of a block, held as members.
struct Model {
  ztCAD_gAttr attributes;
  ztCAD_gShowable showable;
  std::optional<ztCAD_LCS> lcs;
  bool readOk = false;
  bool wasRead = false;

  bool read(const std::string& xml) {
    const ParsedXml parsed(xml);
    bool fault = false;
    const bool attributesOk = attributes.readXml(parsed.root, fault);
    readOk = showable.readXml(parsed.root, fault) && attributesOk;
    wasRead = true;
    ztCAD_LCS system;
    if (system.readXml(parsed.root, fault)) lcs = system;
    return readOk;
  }
};

std::string textOf(const Model& model) {
  ParsedXml parsed("<e/>");
  model.attributes.writeXml(parsed.root, parsed.document);
  model.showable.writeXml(parsed.root, parsed.document);
  if (model.lcs) model.lcs->writeXml(parsed.root, parsed.document);
  std::string text = node_text::textOf(parsed.root).toStdString();
  text += "attr=" + onlyText(model.attributes) + " ," + onlyText(model.showable);
  if (model.lcs) text += onlyText(*model.lcs);
  return text + (model.readOk ? " ok" : " failed") + (model.wasRead ? " read" : " made");
}

std::string textOf(const ztCAD_cmnProperty& block) {
  return written(block) + onlyText(block) + (block.readOk() ? " ok" : " failed") +
         (block.wasRead() ? " read" : " made");
}

QString anyText(Dice& dice) {
  switch (dice.roll(5)) {
    case 0:
      return {};
    case 1:
      return QString(dice.roll(40), QLatin1Char('x'));
    case 2:
      return fromUtf8("Точка ") + QString::number(dice.roll(3));
    default:
      return QLatin1String("P") + QString::number(dice.roll(100));
  }
}

ztCAD_Color anyColor(Dice& dice) {
  const std::uint32_t components[] = {0, 1, 127, 255, 256, 70000};
  if (dice.oneIn(4)) return {};
  const int most = dice.oneIn(3) ? 6 : 4;
  const auto any = [&] { return components[dice.roll(most)]; };
  return {any(), any(), any()};
}

ztCAD_Visible anyVisible(Dice& dice) {
  return dice.oneIn(3) ? ztCAD_Visible() : ztCAD_Visible(dice.oneIn(2));
}

std::string anyXml(Dice& dice) {
  const char* const names[] = {"",          " name=''",    " name='P1'", " name='a name of more than 15'",
                               " name='Я'", " name='&lt;'"};
  const char* const comments[] = {"", " comment=''", " comment='c'", " comment='a long comment, longer'",
                                  " comment='&#65;'"};
  const char* const informs[] = {"", "", " inform='i'", " inform='Ё'"};
  const char* const colors[] = {"",
                                " color=''",
                                " color='RGB, 1, 2, 3'",
                                " color='RGB,255,255,256'",
                                " color='red'",
                                " color='RGB, 1, 2'",
                                " color='RGB, a, 2, 3'",
                                " color='RGB, 1, 2, 3, 4'",
                                " color='RGB, 1,,2, 3'",
                                " color='&#82;GB, 1, 2, 3'"};
  const char* const visibles[] = {"",
                                  " visible='true'",
                                  " visible='FALSE'",
                                  " visible='0'",
                                  " visible=''",
                                  " visible='1.5'",
                                  " visible='&#116;rue'"};
  const char* const systems[] = {"",
                                 "",
                                 " LCS=''",
                                 " LCS='CS, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12'",
                                 " LCS='CS, 1'",
                                 " MCS='CS, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12'"};
  return std::string("<e") + dice.pick(names) + dice.pick(comments) + dice.pick(informs) + dice.pick(colors) +
         dice.pick(visibles) + dice.pick(systems) + "/>";
}

/// A block and its model, to which the same is done.
class BlockAndModel {
 public:
  void change(Dice& dice) {
    const QString text = anyText(dice);
    switch (dice.roll(12)) {
      case 0:
        m_block->setName(text);
        m_model.attributes.setName(text);
        break;
      case 1:
        m_block->setShortName(ztCAD_ShortText(text));
        m_model.attributes.setName(text);
        break;
      case 2:
        m_block->setComment(text);
        m_model.attributes.setComment(text);
        break;
      case 3:
        m_block->setInform(text);
        m_model.attributes.setInform(text);
        break;
      case 4:
        setColor(anyColor(dice));
        break;
      case 5:
        setVisible(anyVisible(dice));
        break;
      case 6:
        setSystem(dice);
        break;
      case 7:
      case 8:
        read(dice);
        break;
      case 9:
        if (dice.oneIn(4)) changeObjects(dice);
        break;
      case 10:
        if (dice.oneIn(4)) setObjects(dice);
        break;
      default:
        break;
    }
  }

  /// The addresses of objects that were made stay.
  void assign(const BlockAndModel& other) {
    *m_block = *other.m_block;
    m_model = other.m_model;
  }
  void becomeCopyOf(const BlockAndModel& other) {
    m_block = std::make_unique<ztCAD_cmnProperty>(*other.m_block);
    m_model = other.m_model;
    m_attributes = nullptr;
  }

  void expectEqual() const {
    ASSERT_EQ(textOf(*m_block), textOf(m_model));
    ASSERT_EQ(m_block->name(), m_model.attributes.name());
    ASSERT_EQ(m_block->shortName().toString(), m_model.attributes.name());
    ASSERT_EQ(m_block->comment(), m_model.attributes.comment());
    ASSERT_EQ(m_block->inform(), m_model.attributes.inform());
    ASSERT_EQ(onlyText(m_block->color()), onlyText(m_model.showable.color()));
    ASSERT_EQ(m_block->visible().value(), m_model.showable.visible().value());
    ASSERT_EQ(m_block->hasLCS(), m_model.lcs.has_value());
    if (m_attributes) {
      ASSERT_EQ(&m_block->attributes(), m_attributes);
    }
    const ztCAD_cmnProperty copy = *m_block;  // this one keeps being without objects
    ASSERT_EQ(onlyText(copy.attributes()), onlyText(m_model.attributes));
    ASSERT_EQ(onlyText(copy.showable()), onlyText(m_model.showable));
    ASSERT_EQ(copy.attributes().readOk(), m_model.attributes.readOk());
    ASSERT_EQ(copy.attributes().wasRead(), m_model.attributes.wasRead());
  }

 private:
  void setColor(const ztCAD_Color& color) {
    m_block->setColor(color);
    m_model.showable.setColor(color);
  }
  void setVisible(const ztCAD_Visible& visible) {
    m_block->setVisible(visible);
    m_model.showable.setVisible(visible);
  }
  void setSystem(Dice& dice) {
    std::optional<ztCAD_LCS> system;
    if (!dice.oneIn(3))
      system = ztCAD_LCS(dice.oneIn(2), std::vector<double>(static_cast<std::size_t>(dice.roll(3)), 2));
    m_block->setLcs(system);
    m_model.lcs = system;
  }
  void read(Dice& dice) {
    const std::string xml = anyXml(dice);
    const bool expected = m_model.read(xml);
    bool fault = true;
    if (dice.oneIn(2)) {
      ASSERT_EQ(m_block->readXml(ParsedXml(xml).root, fault), expected) << xml;
    } else {
      const auto visit = [&](const ztcad::ElementView& view) {
        ASSERT_EQ(m_block->read(view, fault), expected) << xml;
      };
      ASSERT_TRUE(ztcad::readPlainXml(xml, ztcad::XmlBytes::Utf8, visit)) << xml;
    }
    ASSERT_FALSE(fault) << xml;
  }
  void changeObjects(Dice& dice) {
    const QString text = anyText(dice);
    const ztCAD_Color color = anyColor(dice);
    m_attributes = &m_block->attributes();
    m_block->attributes().setComment(text);
    m_model.attributes.setComment(text);
    m_block->showable().setColor(color);
    m_model.showable.setColor(color);
  }
  void setObjects(Dice& dice) {
    ztCAD_gAttr attributes;
    attributes.setName(anyText(dice));
    attributes.setInform(anyText(dice));
    if (dice.oneIn(2)) attributes.setReadOk(dice.oneIn(2));
    m_block->setAttributes(attributes);
    m_model.attributes = attributes;
    ztCAD_gShowable showable;
    showable.setColor(anyColor(dice));
    m_block->setShowable(showable);
    m_model.showable = showable;
    m_attributes = &m_block->attributes();
  }

  std::unique_ptr<ztCAD_cmnProperty> m_block = std::make_unique<ztCAD_cmnProperty>();
  Model m_model;
  const ztCAD_gAttr* m_attributes = nullptr;  // null: the objects of the block were not asked for
};

TEST(PropertyBlockDifferential, AnySeriesOfCallsIsThatOfMembers) {
  Dice dice(randomSeed());
  std::vector<BlockAndModel> all(6);
  const int rounds = randomRounds(20000);
  for (int i = 0; i < rounds && !testing::Test::HasFatalFailure(); ++i) {
    BlockAndModel& pair = all[static_cast<std::size_t>(dice.roll(6))];
    const BlockAndModel& other = all[static_cast<std::size_t>(dice.roll(6))];
    if (dice.oneIn(200))
      pair = BlockAndModel();
    else if (dice.oneIn(8))
      pair.assign(other);
    else if (dice.oneIn(20))
      pair.becomeCopyOf(other);
    else
      pair.change(dice);
    pair.expectEqual();
  }
}

}  // namespace
