#include "engines/repair/CheckTest.h"
#include "pdf/filters/Filters.h"

namespace TarnixTools::engines::repair {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::RawPdf;

using Code = ProblemCode;

class StreamDataCheckTest : public CheckTest {
 protected:
  static std::string Deflated(const std::string& data) {
    std::string deflated;
    pdf::DeflateTo(deflated, data, 6);
    return deflated;
  }

  // A document with the stream, which its trailer names.
  static std::string DocumentWith(const std::string& entries, const std::string& data) {
    return RawPdf().Pages(1).Stream(4, entries, data).Table("/Root 1 0 R/Own 4 0 R");
  }
};

TEST_F(StreamDataCheckTest, FindsNothingInSoundData) {
  Repair(DocumentWith("/Filter/FlateDecode", Deflated("sound")));
  EXPECT_THAT(Damage(), IsEmpty());
}

TEST_F(StreamDataCheckTest, FindsDataOfWhichNothingCanBeHad) {
  Repair(DocumentWith("/Filter[/ASCIIHexDecode/FlateDecode]", "00>"));
  EXPECT_THAT(Messages(), ElementsAre("Object 4: the data of the stream is damaged "
                                      "(3 bytes, of which 0 can be had); lost"));
  EXPECT_EQ(Complaints(), "");
}

TEST_F(StreamDataCheckTest, KeepsWhatCanBeDecoded) {
  std::string text;
  for (int i = 0; i < 3000; ++i) {
    text += "line " + std::to_string(i * 7919 % 10007) + "\n";
  }
  const std::string data = Deflated(text);
  Repair(DocumentWith("/Filter/FlateDecode/Mine true", data.substr(0, data.size() / 2)));
  ASSERT_THAT(Damage(), ElementsAre(Code::kStreamDataDamaged));
  EXPECT_THAT(Messages()[0], HasSubstr("can be had); lost"));
  EXPECT_EQ(Complaints(), "");
  EXPECT_THAT(Held(), HasSubstr("line 0\nline 7919\n"));
  EXPECT_THAT(Held(), HasSubstr("/Mine true"));
}

TEST_F(StreamDataCheckTest, WrapsDataAnew) {
  std::string data = Deflated("sound");
  data.back() = static_cast<char>(data.back() ^ 1);
  Repair(DocumentWith("/Filter/FlateDecode", data));
  EXPECT_THAT(Damage(), ElementsAre(Code::kStreamWrapping));
  EXPECT_EQ(Complaints(), "");
  EXPECT_THAT(Held(), HasSubstr("sound"));
}

TEST_F(StreamDataCheckTest, LeavesFiltersOfImagesBehindDamagedOnes) {
  const std::string data = Deflated(std::string(5000, 'x') + "end");
  Repair(DocumentWith("/Filter[/FlateDecode/DCTDecode]/DecodeParms[null<</ColorTransform 1>>]",
                      data.substr(0, data.size() - 8)));
  ASSERT_THAT(Damage(), ElementsAre(Code::kStreamDataDamaged));
  EXPECT_THAT(Held(), HasSubstr("/DCTDecode"));
  EXPECT_THAT(Held(), HasSubstr("/ColorTransform 1"));
  EXPECT_THAT(Held(), ::testing::Not(HasSubstr("/FlateDecode")));
}

TEST_F(StreamDataCheckTest, LeavesWhatNobodyKnows) {
  Repair(DocumentWith("/Filter/MyOwnDecode", "data"));
  EXPECT_THAT(Damage(), IsEmpty());
  EXPECT_THAT(Lint(), ElementsAre(Code::kStreamFilterUnknown));
}

TEST_F(StreamDataCheckTest, LeavesWhatIsTooLarge) {
  const std::string spaces = Deflated(std::string(8 << 20, ' '));
  Repair(DocumentWith("/Filter[/FlateDecode/FlateDecode]", Deflated(spaces)));
  EXPECT_THAT(Damage(), IsEmpty());
  EXPECT_THAT(Lint(), ElementsAre(Code::kStreamTooLarge));
}

}  // namespace
}  // namespace TarnixTools::engines::repair
