#include "PdfSetMetaDataTask.h"
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using testing::TestPdf;

class PdfSetMetaDataTaskTest : public testing::DocumentTest {
 protected:
  // A task on a document that has an author and a creator; it writes to out/.
  PdfSetMetaDataTask Task() const {
    TestPdf().Pages(2).InfoEntry("/Author (Old) /Creator (Old too)").Write(Path("doc.pdf"));
    PdfSetMetaDataTask task(Doc("doc.pdf"));
    task.SetOutputPath(directory_.MakeDir("out"));
    return task;
  }

  std::vector<std::string> Values(const std::string& name, const std::string& password = "") const {
    PdfDoc document = Doc(name, password);
    return {document.GetMetaData(PdfMetadataParam::Author),
            document.GetMetaData(PdfMetadataParam::Keywords),
            document.GetMetaData(PdfMetadataParam::Creator),
            document.GetMetaData(PdfMetadataParam::Producer)};
  }

  static Failure NothingSet() {
    return {PdfExceptionCode::InvalidParameter,
            "None META parameter defined at task, empty values setting disabled"};
  }
};

TEST_F(PdfSetMetaDataTaskTest, HasDefaults) {
  PdfSetMetaDataTask task;
  EXPECT_EQ(task.GetPdfDocsNum(), 0);
  EXPECT_EQ(task.GetOutName(), "document_with_meta_params_set.pdf");
  EXPECT_FALSE(task.GetAllowEmptyMetaValues());
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(task.GetMetaParam(static_cast<PdfMetadataParam>(i)), "");
  }
}

TEST_F(PdfSetMetaDataTaskTest, WritesAllFourValues) {
  PdfSetMetaDataTask task = Task();
  task.SetMetaParam(PdfMetadataParam::Author, "Ada");
  task.SetMetaParam(PdfMetadataParam::Keywords, "engine, analytical");
  task.SetMetaParam(PdfMetadataParam::Creator, "Pen");
  task.SetMetaParam(PdfMetadataParam::Producer, "Press");
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("document_with_meta_params_set.pdf"));
  EXPECT_THAT(Values("out/document_with_meta_params_set.pdf"),
              ElementsAre("Ada", "engine, analytical", "Pen", "Press"));
  EXPECT_EQ(Doc("out/document_with_meta_params_set.pdf").GetPagesNum(), 2);
}

TEST_F(PdfSetMetaDataTaskTest, TakesAnyOneOfTheValues) {
  for (std::size_t i = 0; i < 4; ++i) {
    PdfSetMetaDataTask task = Task();
    task.SetMetaParam(static_cast<PdfMetadataParam>(i), "Ada");
    task.SetOutName("x.pdf");
    task.Execute();
    std::vector<std::string> expected = {"", "", "", "\r"};
    expected[i] = "Ada";
    EXPECT_EQ(Values("out/x.pdf"), expected);
    task.SetMetaParam(static_cast<PdfMetadataParam>(i), "");
    EXPECT_EQ(FailureOf([&] { task.Execute(); }), NothingSet());
    task.SetKeepUnset(true);  // where a value that is given counts also when it is empty
    task.Execute();
    expected = {"Old", "", "Old too", ""};
    expected[i] = i == 3 ? "\r" : "";
    EXPECT_EQ(Values("out/x.pdf"), expected) << i;
  }
}

TEST_F(PdfSetMetaDataTaskTest, ClearsWhatIsNotSet) {
  PdfSetMetaDataTask task = Task();
  task.SetMetaParam(PdfMetadataParam::Producer, "Press");
  task.SetOutName("x.pdf");
  task.SetOutName("");
  task.Execute();
  EXPECT_THAT(Values("out/x.pdf"), ElementsAre("", "", "", "Press"));
}

TEST_F(PdfSetMetaDataTaskTest, WritesTitleAndSubject) {
  PdfSetMetaDataTask task = Task();
  EXPECT_EQ(task.GetTitle(), "");
  task.SetTitle("Notes \xC3\xA4");
  task.SetSubject("Engines");
  task.SetOutName("x.pdf");
  task.Execute();
  EXPECT_EQ(task.GetTitle(), "Notes \xC3\xA4");
  EXPECT_EQ(task.GetSubject(), "Engines");
  EXPECT_EQ(Doc("out/x.pdf").GetTitle(), "Notes \xC3\xA4");
  EXPECT_EQ(Doc("out/x.pdf").GetSubject(), "Engines");
  EXPECT_THAT(Values("out/x.pdf"), ElementsAre("", "", "", "\r"));
  task.ResetMetaParam();
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), NothingSet());
}

TEST_F(PdfSetMetaDataTaskTest, KeepsWhatIsNotGiven) {
  PdfSetMetaDataTask task = Task();
  task.SetOutName("x.pdf");
  task.SetKeepUnset(true);
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), NothingSet());
  task.SetTitle("Notes");
  task.Execute();
  EXPECT_EQ(Doc("out/x.pdf").GetTitle(), "Notes");
  EXPECT_THAT(Values("out/x.pdf"), ElementsAre("Old", "", "Old too", ""));
  task.ResetMetaParam();
  task.SetMetaParam(PdfMetadataParam::Author, "");
  task.Execute();
  EXPECT_EQ(Doc("out/x.pdf").GetTitle(), "");
  EXPECT_THAT(Values("out/x.pdf"), ElementsAre("", "", "Old too", ""));
}

TEST_F(PdfSetMetaDataTaskTest, NeedsAValueBeforeItLooksForTheFile) {
  PdfSetMetaDataTask task(PdfDoc(Path("missing.pdf"), "", false));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), NothingSet());
  task.SetMetaParam(PdfMetadataParam::Author, "Ada");
  EXPECT_EQ(FailureOf([&] { task.Execute(); }).code, PdfExceptionCode::FileNotFound);
  task.ResetMetaParam();
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), NothingSet());
}

TEST_F(PdfSetMetaDataTaskTest, WritesEmptyValuesWhenItMay) {
  PdfSetMetaDataTask task = Task();
  task.SetAllowEmptyMetaValues(true);
  task.Execute();
  EXPECT_THAT(Values("out/document_with_meta_params_set.pdf"), ElementsAre("", "", "", "\r"));
}

TEST_F(PdfSetMetaDataTaskTest, NeedsExactlyOneDocument) {
  PdfSetMetaDataTask task = Task();
  task.AddPdfDoc(Doc("doc.pdf"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Unexpected PDF docs number [2], expected single doc at task"));
  EXPECT_EQ(FailureOf([] { PdfSetMetaDataTask().Execute(); }).message,
            "Unexpected PDF docs number [0], expected single doc at task");
  task.SetInputDoc(Doc("doc.pdf"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), NothingSet());
}

TEST_F(PdfSetMetaDataTaskTest, RejectsParametersThatAreNone) {
  PdfSetMetaDataTask task = Task();
  for (const int param : {4, -1, 1000000}) {
    const auto value = static_cast<PdfMetadataParam>(param);
    const Failure expected(PdfExceptionCode::InvalidParameter,
                           "Invalid PDF META param [" + std::to_string(param) + "]");
    EXPECT_EQ(FailureOf([&] { task.SetMetaParam(value, "x"); }), expected);
    EXPECT_EQ(FailureOf([&] { task.GetMetaParam(value); }), expected);
  }
}

TEST_F(PdfSetMetaDataTaskTest, WritesBesideTheDocumentWhenNoDirectoryIsSet) {
  MakePdf("doc.pdf", 1);
  PdfSetMetaDataTask task(Doc("doc.pdf"));
  task.SetMetaParam(PdfMetadataParam::Author, "Ada");
  task.Execute();
  EXPECT_EQ(task.GetOutputPath(), Backslashes(directory_.Path() + "/"));
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf", "document_with_meta_params_set.pdf"));
}

TEST_F(PdfSetMetaDataTaskTest, PutsThePasswordOnTheOutput) {
  PdfSetMetaDataTask task = Task();
  task.SetMetaParam(PdfMetadataParam::Author, "Ada");
  task.SetOutPassword("pw");
  task.SetOutName("x.pdf");
  task.Execute();
  EXPECT_TRUE(PdfDoc::HasPassword(Path("out/x.pdf")));
  EXPECT_THAT(Values("out/x.pdf", "pw"), ElementsAre("Ada", "", "", "\r"));
}

TEST_F(PdfSetMetaDataTaskTest, IsCopiedAndMovedWithAllItHolds) {
  PdfSetMetaDataTask task = Task();
  task.SetMetaParam(PdfMetadataParam::Keywords, "k");
  task.SetAllowEmptyMetaValues(true);
  task.SetOutName("x.pdf");
  PdfSetMetaDataTask copy(task);
  task.SetMetaParam(PdfMetadataParam::Keywords, "later");
  PdfSetMetaDataTask moved(std::move(task));
  EXPECT_EQ(copy.GetMetaParam(PdfMetadataParam::Keywords), "k");
  EXPECT_EQ(moved.GetMetaParam(PdfMetadataParam::Keywords), "later");
  for (PdfSetMetaDataTask* same : {&copy, &moved}) {
    EXPECT_TRUE(same->GetAllowEmptyMetaValues());
    EXPECT_EQ(same->GetOutName(), "x.pdf");
  }
}

TEST_F(PdfSetMetaDataTaskTest, HasNoValuesAfterItWasMovedFrom) {
  PdfSetMetaDataTask task = Task();
  const PdfSetMetaDataTask moved(std::move(task));
  const Failure expected(PdfExceptionCode::InvalidParameter, "Invalid PDF META param [0]");
  // NOLINTBEGIN(bugprone-use-after-move)
  EXPECT_EQ(FailureOf([&] { task.GetMetaParam(PdfMetadataParam::Author); }), expected);
  EXPECT_EQ(FailureOf([&] { task.SetMetaParam(PdfMetadataParam::Author, "Ada"); }), expected);
  task.ResetMetaParam();
  task.SetMetaParam(PdfMetadataParam::Author, "Ada");
  EXPECT_EQ(task.GetMetaParam(PdfMetadataParam::Author), "Ada");
  // NOLINTEND(bugprone-use-after-move)
}

}  // namespace
}  // namespace TarnixTools
