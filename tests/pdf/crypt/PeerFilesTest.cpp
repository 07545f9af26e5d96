// The security handler on files that others encrypted: made by the qpdf program while the test
// runs, and found in the corpus.
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/crypt/EncryptedFile.h"
#include "pdf/crypt/Security.h"
#include "pdf/filters/Filters.h"
#include "support/Readers.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::pdf {
namespace {

using testing::EncryptedFile;
using testing::ReadBytes;
using testing::TempDir;
using testing::TestPdf;

constexpr const char* kContent = "BT /F1 12 Tf 72 720 Td (Ein geheimer Satz) Tj ET";

struct PeerCase {
  const char* name;
  std::vector<std::string> options;  // between the passwords and "--"
  int revision;
  CryptMethod method;
  const char* user = "user";
  const char* owner = "owner";
};

class PeerFiles : public ::testing::TestWithParam<PeerCase> {
 protected:
  EncryptedFile Encrypted() {
    const std::string plain =
        TestPdf().Page().Content(kContent).Write(directory_.Path("plain.pdf"));
    const std::string path = directory_.Path("encrypted.pdf");
    std::vector<std::string> command = {
        "qpdf",      "--allow-weak-crypto", "--stream-data=preserve",
        "--encrypt", GetParam().user,       GetParam().owner};
    command.insert(command.end(), GetParam().options.begin(), GetParam().options.end());
    command.insert(command.end(), {"--", plain, path});
    const testing::ProgramResult result = testing::RunProgram(command);
    EXPECT_EQ(result.exit_status, 0) << result.errors;
    return EncryptedFile(ReadBytes(path));
  }

  TempDir directory_;
};

void ExpectContent(const EncryptedFile& file, const Security& security) {
  bool found = false;
  for (const EncryptedFile::Stream& stream : file.Streams()) {
    found = found || testing::Decrypt(security, stream).starts_with(kContent);
  }
  EXPECT_TRUE(found);
}

TEST_P(PeerFiles, OpenWithEitherPassword) {
  TARNIX_NEED_PROGRAM("qpdf");
  const EncryptedFile file = Encrypted();
  const EncryptionFacts facts = file.Facts();
  EXPECT_EQ(facts.revision, GetParam().revision);
  EXPECT_EQ(facts.stream_method, GetParam().method);

  const Security as_user = Security::Open(facts, GetParam().user);
  EXPECT_FALSE(as_user.opened_as_owner());
  EXPECT_TRUE(as_user.PermissionsAreGenuine());
  ExpectContent(file, as_user);

  const Security as_owner = Security::Open(facts, GetParam().owner);
  EXPECT_TRUE(as_owner.opened_as_owner());
  EXPECT_TRUE(as_owner.PermissionsAreGenuine());
  ExpectContent(file, as_owner);
}

TEST_P(PeerFiles, StayClosedToOthers) {
  TARNIX_NEED_PROGRAM("qpdf");
  const EncryptionFacts facts = Encrypted().Facts();
  for (const char* wrong : {"User", "owner ", "useruser", "\xC3\xBC"}) {
    try {
      Security::Open(facts, wrong);
      ADD_FAILURE() << wrong;
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kPasswordRequired);
    }
  }
}

TEST_P(PeerFiles, OpenWithAKeyLengthThatIsWrong) {
  TARNIX_NEED_PROGRAM("qpdf");
  const EncryptedFile file = Encrypted();
  EncryptionFacts facts = file.Facts();
  for (const int bits : {5, 16, 40, 128, 0, -1, 1 << 30}) {
    facts.key_bits = bits;
    ExpectContent(file, Security::Open(facts, GetParam().owner));
  }
}

const std::string kLongPassword(140, 'p');

INSTANTIATE_TEST_SUITE_P(
    Qpdf, PeerFiles,
    ::testing::Values(
        PeerCase{"Rc4With40Bits", {"40"}, 2, CryptMethod::kRc4},
        PeerCase{"Rc4With128Bits", {"128", "--use-aes=n"}, 3, CryptMethod::kRc4},
        PeerCase{"Rc4InVersion4", {"128", "--use-aes=n", "--force-V4"}, 4, CryptMethod::kRc4},
        PeerCase{"Aes128", {"128", "--use-aes=y"}, 4, CryptMethod::kAes128},
        PeerCase{"Aes128PlainMetadata",
                 {"128", "--use-aes=y", "--cleartext-metadata"},
                 4,
                 CryptMethod::kAes128},
        PeerCase{"Aes256Revision5", {"256", "--force-R5"}, 5, CryptMethod::kAes256},
        PeerCase{"Aes256Revision6", {"256"}, 6, CryptMethod::kAes256},
        PeerCase{"Aes256PlainMetadata", {"256", "--cleartext-metadata"}, 6, CryptMethod::kAes256},
        PeerCase{"EmptyUserRc4", {"128", "--use-aes=n"}, 3, CryptMethod::kRc4, ""},
        PeerCase{"EmptyUserAes256", {"256"}, 6, CryptMethod::kAes256, ""},
        PeerCase{"UnicodeAes256",
                 {"256"},
                 6,
                 CryptMethod::kAes256,
                 "h\xC3\xB4tel",
                 "\xD0\xBF\xD0\xB0\xD1\x80"},
        PeerCase{"UnicodeAes128",
                 {"128", "--use-aes=y"},
                 4,
                 CryptMethod::kAes128,
                 "h\xC3\xB4tel",
                 "\xE2\x82\xAC 5"},
        PeerCase{"LongAes256", {"256"}, 6, CryptMethod::kAes256, kLongPassword.c_str()},
        PeerCase{"LongRc4", {"40"}, 2, CryptMethod::kRc4, kLongPassword.c_str()}),
    [](const auto& one) { return std::string(one.param.name); });

// Takes the file as opened when every Flate stream of it decodes to its end.
void ExpectSoundStreams(const EncryptedFile& file, const Security& security) {
  int sound = 0;
  for (const EncryptedFile::Stream& stream : file.Streams()) {
    if (testing::ValueOf(stream.dictionary, "/Filter") == "/FlateDecode") {
      const std::string plain = testing::Decrypt(security, stream);
      const bool complete =
          Decode({{FilterKind::kFlate, {}}}, plain, std::size_t{1} << 28).complete;
      EXPECT_TRUE(complete) << "object " << stream.number;
      sound += complete ? 1 : 0;
    }
  }
  EXPECT_GT(sound, 0);
}

struct CorpusCase {
  std::string file;
  std::string password;
};

std::vector<CorpusCase> CorpusCases() {
  std::vector<CorpusCase> cases;
  std::ifstream manifest(testing::CorpusDir() + "/general/manifest.tsv");
  std::string line;
  while (std::getline(manifest, line)) {
    std::vector<std::string> fields(1);
    for (const char c : line) {
      if (c == '\t') {
        fields.emplace_back();
      } else {
        fields.back().push_back(c);
      }
    }
    if (fields.size() >= 5 && !fields[4].empty() && fields[0] != "file") {
      cases.push_back({fields[0], fields[4]});
    }
  }
  return cases;
}

TEST(CorpusFiles, OpenWithTheirPasswords) {
  TARNIX_NEED_CORPUS("general");
  const std::vector<CorpusCase> cases = CorpusCases();
  ASSERT_FALSE(cases.empty());
  for (const CorpusCase& one : cases) {
    SCOPED_TRACE(one.file);
    const EncryptedFile file(ReadBytes(testing::CorpusDir() + "/general/" + one.file));
    const EncryptionFacts facts = file.Facts();
    ExpectSoundStreams(file, Security::Open(facts, one.password));
    EXPECT_THROW(Security::Open(facts, one.password + "x"), Error);
  }
}

}  // namespace
}  // namespace TarnixTools::pdf
