#include "engines/repair/CheckTest.h"

namespace TarnixTools::engines::repair {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::RawPdf;
using testing::TestPdf;

using Code = ProblemCode;

class FileCheckTest : public CheckTest {
 protected:
  static std::string Sound() { return TestPdf().Pages(2).Bytes(); }

  static RawPdf Raw() { return RawPdf().Pages(1); }
};

TEST_F(FileCheckTest, FindsNothingInSoundFiles) {
  Repair(Sound());
  EXPECT_THAT(Damage(), IsEmpty());
  EXPECT_THAT(Lint(), IsEmpty());
  Repair(Raw().Stream(4, "", "data").Table());
  EXPECT_THAT(Damage(), IsEmpty());
}

TEST_F(FileCheckTest, FindsAMissingHeader) {
  Repair(With(Sound(), "%PDF-1.7", "%XYZ-1.7"));
  EXPECT_THAT(Messages(), ElementsAre("The file header is missing; fixed"));
  EXPECT_EQ(Complaints(), "");
  EXPECT_EQ(Texts().size(), 2u);
}

TEST_F(FileCheckTest, FindsBytesBeforeTheHeader) {
  Repair("HTTP/1.1 200 OK\r\n\r\n" + Sound());
  EXPECT_THAT(Damage(), Contains(Code::kHeaderNotFirst));
  EXPECT_EQ(Complaints(), "");
}

TEST_F(FileCheckTest, FindsAVersionThatIsNone) {
  Repair(With(Sound(), "%PDF-1.7", "%PDF-a.b"));
  EXPECT_THAT(Messages(), ElementsAre("Byte 0: the file header names no version; fixed"));
}

TEST_F(FileCheckTest, FindsAMissingEnd) {
  Repair(With(Sound(), "%%EOF", ""));
  EXPECT_THAT(Damage(), ElementsAre(Code::kEndMissing));
}

TEST_F(FileCheckTest, DoesNotMindBytesBehindTheEnd) {
  Repair(Sound() + "more");
  EXPECT_THAT(Damage(), IsEmpty());
  EXPECT_THAT(Lint(), ElementsAre(Code::kJunkAtEnd));
}

TEST_F(FileCheckTest, FindsAnEndThatIsFarAway) {
  Repair(Sound() + std::string(2000, '\0'));
  EXPECT_THAT(Damage(), ElementsAre(Code::kEndFar));
}

TEST_F(FileCheckTest, FindsACrossReferenceThatCountsFromOne) {
  Repair(With(Sound(), "xref\n0 ", "xref\n1 "));
  EXPECT_THAT(Damage(), ElementsAre(Code::kXrefDamaged));
  EXPECT_EQ(Complaints(), "");
}

TEST_F(FileCheckTest, FindsAWrongStart) {
  Repair(With(Sound(), "startxref\n", "startxref\n7"));
  EXPECT_THAT(Damage(), ElementsAre(Code::kXrefDamaged, Code::kXrefRebuilt));
  EXPECT_EQ(Texts().size(), 2u);
}

TEST_F(FileCheckTest, FindsWrongPlaces) {
  Repair(Raw().Table("/Root 1 0 R", 5));
  EXPECT_THAT(Damage(), Contains(Code::kXrefRebuilt));
  EXPECT_EQ(Complaints(), "");
}

TEST_F(FileCheckTest, FindsAWrongSize) {
  Repair(With(Sound(), "/Size ", "/Size 2/Was "));
  EXPECT_THAT(Damage(), ElementsAre(Code::kXrefSizeWrong));
  EXPECT_EQ(Complaints(), "");
}

TEST_F(FileCheckTest, DoesNotMindALargeSize) {
  Repair(With(Sound(), "/Size ", "/Size 9"));
  EXPECT_THAT(Damage(), IsEmpty());
  EXPECT_THAT(Lint(), ElementsAre(Code::kXrefSizeLarge));
}

TEST_F(FileCheckTest, FindsACatalogInTheTrailer) {
  Repair(TestPdf().Pages(1).CatalogInTrailer().Bytes());
  EXPECT_THAT(Damage(), ElementsAre(Code::kCatalogInTrailer));
  EXPECT_EQ(Complaints(), "");
}

TEST_F(FileCheckTest, FindsInformationThatIsNone) {
  Repair(Raw().Object(4, "(text)").Table("/Root 1 0 R/Info 4 0 R"));
  EXPECT_THAT(Messages(), ElementsAre("An entry of the trailer cannot be used (Info); fixed"));
  EXPECT_EQ(Output().find("/Info"), std::string::npos);
}

TEST_F(FileCheckTest, FindsAWrongLength) {
  Repair(Raw().Object(4, "<</Length 99>>\nstream\ndata\nendstream").Table());
  EXPECT_THAT(
      Messages(),
      ElementsAre("Object 4: the length of the stream is wrong (99 given, 4 there); fixed"));
}

TEST_F(FileCheckTest, FindsALengthThatIsNotThere) {
  Repair(Raw().Object(4, "<<>>\nstream\ndata\nendstream").Table());
  EXPECT_THAT(Messages(),
              ElementsAre("Object 4: the length of the stream is wrong (none given); fixed"));
}

TEST_F(FileCheckTest, FindsAStreamWithoutAnEnd) {
  Repair(Raw().Object(4, "<</Length 4>>\nstream\ndata").Table());
  EXPECT_THAT(Damage(), ElementsAre(Code::kStreamEndMissing));
}

TEST_F(FileCheckTest, FindsAnObjectWithoutAnEnd) {
  Repair(Raw().Mark(4).Raw("4 0 obj\n(text)\n").Table());
  EXPECT_THAT(Messages(), ElementsAre("Object 4: nothing ends the object; fixed"));
}

TEST_F(FileCheckTest, TellsLostObjectsFromThoseThatNothingNeeds) {
  Repair(Raw().Mark(4).Raw("5 0 obj\n(text)\nendobj\n").Table());
  EXPECT_THAT(Damage(), Contains(Code::kXrefEntryWrong));
  Repair(Raw().Mark(4).Raw("5 0 obj\n(text)\nendobj\n").Table("/Root 1 0 R/Own 4 0 R"));
  EXPECT_THAT(Messages(), Contains("Object 4: the object is missing; lost"));
}

TEST_F(FileCheckTest, FindsDamagedObjects) {
  Repair(Raw().Object(4, "<</A (text)").Table("/Root 1 0 R/Own 4 0 R"));
  EXPECT_THAT(Messages(), Contains("Object 4: the object is damaged; lost"));
  EXPECT_EQ(Complaints(), "");
}

TEST_F(FileCheckTest, DoesNotMindAKeyThatStandsTwice) {
  Repair(Raw().Object(4, "<</A 1/A 2>>").Table());
  EXPECT_THAT(Damage(), IsEmpty());
  EXPECT_THAT(Lint(), ElementsAre(Code::kRepeatedKey));
}

TEST_F(FileCheckTest, FindsAnUpdateThatTheNewestOnePassesOver) {
  const std::string first = Raw().Object(4, "(first)").Table();
  const std::string start = first.substr(first.rfind("startxref"));
  const std::string previous = "/Prev " + std::to_string(std::stoi(start.substr(10)));
  const auto update = [&](const std::string& before, const std::string& text) {
    return RawPdf(before).Object(4, text).Table("/Root 1 0 R" + previous);
  };
  Repair(update(first, "(second)"));
  EXPECT_THAT(Damage(), IsEmpty());
  Repair(update(update(first, "(second)"), "(third)"));
  EXPECT_THAT(Damage(), ElementsAre(Code::kUpdatesInConflict));
}

TEST_F(FileCheckTest, DoesNotTakeDataOfAStreamForAnUpdate) {
  const std::string first = Raw().Table();
  const std::string previous =
      "/Prev " + std::to_string(std::stoi(first.substr(first.rfind("startxref") + 10)));
  const std::string held = "startxref\n" + std::to_string(first.size()) + "\n%%EOF";
  Repair(RawPdf(first).Stream(4, "", std::string(100, ' ') + held).Table("/Root 1 0 R" + previous));
  EXPECT_THAT(Damage(), IsEmpty());
}

}  // namespace
}  // namespace TarnixTools::engines::repair
