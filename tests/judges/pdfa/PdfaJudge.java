// Judges PDF/A by the reference validator, one document after the other in one process. Reads lines
// LEVEL<TAB>PATH and answers each with one line:
//   PASS PATH LEVEL
//   FAIL PATH LEVEL<TAB>6.1.8-1,6.2.3.3-2    the rules that do not hold
//   ERROR PATH LEVEL<TAB>what happened
import java.io.BufferedReader;
import java.io.File;
import java.io.InputStreamReader;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.util.TreeSet;
import java.util.logging.Level;
import java.util.logging.LogManager;
import java.util.logging.Logger;
import org.verapdf.gf.foundry.VeraGreenfieldFoundryProvider;
import org.verapdf.pdfa.Foundries;
import org.verapdf.pdfa.PDFAParser;
import org.verapdf.pdfa.PDFAValidator;
import org.verapdf.pdfa.flavours.PDFAFlavour;
import org.verapdf.pdfa.results.TestAssertion;
import org.verapdf.pdfa.results.ValidationResult;

public final class PdfaJudge {
  public static void main(String[] arguments) throws Exception {
    LogManager.getLogManager().reset();
    Logger.getLogger("").setLevel(Level.OFF);
    VeraGreenfieldFoundryProvider.initialise();
    PrintStream out = new PrintStream(System.out, true, "UTF-8");
    BufferedReader in =
        new BufferedReader(new InputStreamReader(System.in, StandardCharsets.UTF_8));
    for (String line = in.readLine(); line != null; line = in.readLine()) {
      int tab = line.indexOf('\t');
      if (tab > 0) {
        out.println(judge(line.substring(0, tab), line.substring(tab + 1)));
      }
    }
  }

  private static String judge(String level, String path) {
    String subject = " " + path + " " + level;
    try {
      TreeSet<String> broken = brokenRules(level, path);
      return broken.isEmpty() ? "PASS" + subject
                              : "FAIL" + subject + "\t" + String.join(",", broken);
    } catch (Exception | StackOverflowError | OutOfMemoryError failure) {
      return "ERROR" + subject + "\t" + String.valueOf(failure).replaceAll("\\s+", " ");
    }
  }

  private static TreeSet<String> brokenRules(String level, String path) throws Exception {
    PDFAFlavour flavour = PDFAFlavour.byFlavourId(level);
    if (flavour == PDFAFlavour.NO_FLAVOUR) {
      throw new IllegalArgumentException("no level of PDF/A: " + level);
    }
    TreeSet<String> broken = new TreeSet<>();
    try (PDFAParser parser =
             Foundries.defaultInstance().createParser(new File(path), flavour);
         PDFAValidator validator =
             Foundries.defaultInstance().createValidator(flavour, false)) {
      ValidationResult result = validator.validate(parser);
      for (TestAssertion assertion : result.getTestAssertions()) {
        if (assertion.getStatus() == TestAssertion.Status.FAILED) {
          broken.add(assertion.getRuleId().getClause() + "-"
              + assertion.getRuleId().getTestNumber());
        }
      }
      if (broken.isEmpty() && !result.isCompliant()) {
        throw new IllegalStateException("not compliant, and no rule says why");
      }
    }
    return broken;
  }
}
