#include "XOV_Graphics/base/XmlElements.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace xov {
namespace {

/// Gives a document up to some byte, then nothing: once, or for ever.
class FailingDocument : public QIODevice {
public:
  enum class Fails : std::uint8_t { Once, Always };
  FailingDocument(QByteArray text, qint64 until, Fails fails) : text_(std::move(text)), until_(until), fails_(fails) {
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
  }
  bool isSequential() const override { return true; }

protected:
  qint64 readData(char* bytes, qint64 most) override {
    if (done_ == until_ && (fails_ == Fails::Always || !std::exchange(hasFailed_, true))) return -1;
    const qint64 end = done_ < until_ ? until_ : text_.size();
    const qint64 count = std::min(most, end - done_);
    std::copy_n(text_.constData() + done_, count, bytes);
    done_ += count;
    return count;
  }
  qint64 writeData(const char*, qint64) override { return -1; }

private:
  QByteArray text_;
  qint64 until_;
  Fails fails_;
  qint64 done_ = 0;
  bool hasFailed_ = false;
};

int countItems(XmlElements& xml) {
  int items = 0;
  xml.readRoot("list", "A list", [&] {
    xml.readChildren("item", [&] {
      ++items;
      xml.skip();
    });
  });
  return items;
}

QString faultOf(const QByteArray& text) {
  XmlElements xml(text);
  (void)countItems(xml);
  return xml.hasError() ? xml.faultText() : QString();
}

TEST(XmlElements, endWhereADeviceFails) {
  const QByteArray text = "<list>" + QByteArray("<item></item>").repeated(10) + "</list>";
  for (const auto fails : {FailingDocument::Fails::Once, FailingDocument::Fails::Always}) {
    // Within the fourth item: 6 bytes, three items of 13, and its "<item>".
    FailingDocument device(text, 6 + 3 * 13 + 6, fails);
    XmlElements xml(device);
    EXPECT_EQ(countItems(xml), 4);
    EXPECT_TRUE(xml.hasError());
    // What comes after the failure belongs to nothing.
    EXPECT_EQ(xml.readNext(), QXmlStreamReader::Invalid);
    EXPECT_TRUE(xml.atEnd());
  }
}

TEST(XmlElements, refuseATagOfHundredsOfAttributesBeforeItIsRead) {
  QByteArray tag = "<list><item";
  for (int i = 0; i < 500; ++i)
    tag += " a" + QByteArray::number(i) + " = '1'";
  EXPECT_EQ(faultOf(tag + "/></list>"), "");
  EXPECT_EQ(faultOf(tag + " b='1'/></list>"), "line 1: found a tag of hundreds of attributes");
  // A megabyte and a half of them, which would take minutes; two bytes a character as well.
  for (int i = 0; i < 150'000; ++i)
    tag += " b" + QByteArray::number(i) + "='1'";
  EXPECT_EQ(faultOf(tag + "/></list>"), "line 1: found a tag of hundreds of attributes");
  const QString wide = QString::fromLatin1(tag);
  QByteArray utf16 = "\xFF\xFE";
  for (const QChar c : wide) {
    utf16 += char(c.cell());
    utf16 += char(c.row());
  }
  EXPECT_EQ(faultOf(utf16), "line 1: found a tag of hundreds of attributes");
}

TEST(XmlElements, countAttributesOfEachTag) {
  EXPECT_EQ(faultOf("<list>" + QByteArray("<item a='1' b='2'/>").repeated(1000) + "</list>"), "");
}

TEST(XmlElements, refuseAHundredElementsWithinEachOther) {
  const auto nested = [](int levels) {
    return "<list>" + QByteArray("<item>").repeated(levels) + QByteArray("</item>").repeated(levels) + "</list>";
  };
  EXPECT_EQ(faultOf(nested(99)), "");
  EXPECT_EQ(faultOf(nested(100)), "line 1: too many elements within each other");
  EXPECT_EQ(faultOf(nested(300'000)), "line 1: too many elements within each other");
}

TEST(XmlElements, refuseWhatADocumentTypeDeclares) {
  EXPECT_EQ(faultOf("<!DOCTYPE list><list/>"), "");
  EXPECT_EQ(faultOf("<!DOCTYPE list [<!ENTITY a 'b'>]><list/>"),
            "line 1: the document declares entities, which A list has none of");
  EXPECT_EQ(faultOf("<!DOCTYPE list [<!ATTLIST item a CDATA 'b'>]><list/>"),
            "line 1: the document declares elements, which A list has none of");
}

TEST(XmlElements, takeNothingFromOtherFiles) {
  // No file is asked for: what an entity stands for that one might declare is nothing.
  XmlElements xml("<!DOCTYPE list SYSTEM 'file:///etc/hostname'><list>a&other;b</list>");
  QString text;
  xml.readRoot("list", "A list", [&] { text = xml.elementText(); });
  EXPECT_EQ(text, "ab");
  EXPECT_NE(faultOf("<!DOCTYPE list [<!ENTITY f SYSTEM 'file:///etc/hostname'>]><list>&f;</list>"), "");
}

TEST(XmlElements, leaveOutOfATextWhatItsChildrenHold) {
  XmlElements xml("<list> a<sub>b<sub>c</sub></sub>d\n</list>");
  QString text;
  xml.readRoot("list", "A list", [&] { text = xml.elementText(); });
  EXPECT_FALSE(xml.hasError());
  EXPECT_EQ(text, "ad");
}

} // namespace
} // namespace xov
