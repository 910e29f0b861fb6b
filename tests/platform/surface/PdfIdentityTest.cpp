#include "XOV_Graphics/platform/surface/PdfIdentity.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/surface/PdfFile.h"
#include "XOV_Graphics/platform/surface/PdfPage.h"

#include <gtest/gtest.h>

#include <ctime>

namespace xov {
namespace {

/// What two runs of a newer Qt would write differently: dates in a zone, their metadata and identifiers.
struct Identity {
  QByteArray pdfDate;
  QByteArray xmpDate;
  QByteArray uuid;
  QByteArray id;
};

const Identity kMorning{"20261122083000+01'00'", "2026-11-22T08:30:00+01:00",
                        "uuid:0a1b2c3d-0000-4000-8000-00000000abcd", "0a1b2c3d4e5f60718293a4b5c6d7e8f9"};
const Identity kEvening{"20261123193001Z", "2026-11-23T19:30:01Z", "uuid:ffffffff-eeee-4ddd-8ccc-bbbbbbbbbbbb",
                        "99999999999999999999999999999999"};

/// A file of four objects: information, metadata with their length in an object of their own, and a catalogue.
QByteArray fileOf(const Identity& identity) {
  const QByteArray metadata = "<x:xmpmeta><rdf:Description xmp:CreateDate=\"" + identity.xmpDate +
                              "\">\n<xmp:ModifyDate>" + identity.xmpDate + "</xmp:ModifyDate>\n<xmpMM:DocumentID>" +
                              identity.uuid + "</xmpMM:DocumentID>\n</rdf:Description></x:xmpmeta>\n";
  const QByteArrayList objects{
      "<<\n/Title (A)\n/CreationDate (D:" + identity.pdfDate + ")\n/ModDate (D:" + identity.pdfDate + ")\n>>\n",
      "<<\n/Type /Metadata /Length 3 0 R\n>>\nstream\n" + metadata + "endstream\n",
      QByteArray::number(metadata.size()) + "\n",
      "<<\n/Type /Catalog\n/Metadata 2 0 R\n>>\n",
  };
  QByteArray file = "%PDF-1.4\n";
  QByteArray rows = "0000000000 65535 f \n";
  for (qsizetype i = 0; i < objects.size(); ++i) {
    rows += QByteArray::number(file.size()).rightJustified(10, '0') + " 00000 n \n";
    file += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "endobj\n";
  }
  const QByteArray place = QByteArray::number(file.size());
  return file + "xref\n0 5\n" + rows + "trailer\n<<\n/Size 5\n/Root 4 0 R\n/ID [ <" + identity.id + "> <" +
         identity.id + "> ]\n>>\nstartxref\n" + place + "\n%%EOF\n";
}

TEST(PdfIdentity, datesAndIdentifiersAreFixedWhateverTheirLength) {
  const Identity fixed{"20000101000000Z", "2000-01-01T00:00:00Z", "uuid:00000000-0000-0000-0000-000000000000",
                       "00000000000000000000000000000000"};
  const QByteArray expected = fileOf(fixed);
  EXPECT_EQ(withFixedIdentity(fileOf(kMorning)), expected);
  EXPECT_EQ(withFixedIdentity(fileOf(kEvening)), expected);
  EXPECT_EQ(withFixedIdentity(expected), expected);
}

TEST(PdfIdentity, aDateWithinAnotherIsFixedWithIt) {
  Identity nested = kMorning;
  nested.pdfDate = "2026/ModDate (D:2027";
  EXPECT_EQ(withFixedIdentity(fileOf(nested)), withFixedIdentity(fileOf(kMorning)));
}

TEST(PdfIdentity, aDateThatEndsInTheTableStays) {
  QByteArray file = fileOf(kMorning);
  const qsizetype table = file.indexOf("xref\n0 5");
  ASSERT_GT(table, 0);
  file.insert(table, "/ModDate (D:2026");
  file.replace("startxref\n" + QByteArray::number(table), "startxref\n" + QByteArray::number(table + 16));
  EXPECT_TRUE(withFixedIdentity(file).contains("/ModDate (D:2026xref\n0 5\n"));
}

TEST(PdfIdentity, identifiersOfOtherLengthsKeepTheirs) {
  Identity shorter = kMorning;
  shorter.id = "AbCd";
  EXPECT_TRUE(withFixedIdentity(fileOf(shorter)).contains("/ID [ <0000> <0000> ]"));
}

TEST(PdfIdentity, withoutATableNoByteMoves) {
  QByteArray evening = fileOf(kEvening), morning = fileOf(kMorning);
  for (QByteArray* file : {&evening, &morning})
    file->truncate(file->indexOf("startxref"));
  const QByteArray fixed = withFixedIdentity(evening);
  EXPECT_EQ(fixed.size(), evening.size());
  EXPECT_TRUE(fixed.contains("/ID [ <00000000000000000000000000000000> <"));
  EXPECT_TRUE(fixed.contains("(D:20000101000000Z)"));
  EXPECT_EQ(withFixedIdentity(morning).size(), morning.size());
}

TEST(PdfIdentity, whatIsNoPdfStaysAsItIs) {
  for (const QByteArray& bytes :
       {QByteArray(), QByteArray("/ID"), QByteArray("/ID [ <"), QByteArray("/ModDate (D:2026")})
    EXPECT_EQ(withFixedIdentity(bytes), bytes);
}

/// A page that is made in a zone so many hours east of Greenwich.
QByteArray pageInZone(const char* zone) {
  const QByteArray before = qgetenv("TZ");
  qputenv("TZ", zone);
  tzset();
  const QByteArray pdf = pdfPage({0, 0, 200, 100}, [](GraphicsContext& context) {
    context.setColor(colors::red);
    context.fillRect({10, 10, 50, 50});
    context.drawText(QStringLiteral("Seismogram"), {60, 40}, TextAttributes::helvetica(14));
  });
  qputenv("TZ", before);
  tzset();
  return pdf;
}

TEST(PdfIdentity, aPageIsTheSameInEveryZone) {
  const QByteArray utc = pageInZone("UTC");
  EXPECT_TRUE(utc.contains("/CreationDate (D:20000101000000Z)"));
  EXPECT_TRUE(PdfFile::parse(utc));       // the table leads to the page
  EXPECT_EQ(pageInZone("XOV-5:30"), utc); // east of Greenwich
  EXPECT_EQ(pageInZone("XOV+3"), utc);
}

} // namespace
} // namespace xov
