#include <cstdio>

#include "host/reports/Report.h"
#include "host/text/Utf8Check.h"

namespace host::validator {
namespace {

// A text as an attribute or content. XML has no place for control characters, nor for bytes that are no UTF-8.
std::string Escaped(const std::string& text) {
  const bool isUtf8 = FindInvalidUtf8(text) == text.size();
  std::string escaped;
  for (const char letter : text) {
    const auto byte = static_cast<unsigned char>(letter);
    if (letter == '&') {
      escaped += "&amp;";
    } else if (letter == '<') {
      escaped += "&lt;";
    } else if (letter == '>') {
      escaped += "&gt;";
    } else if (letter == '"') {
      escaped += "&quot;";
    } else {
      escaped += (byte < 0x20 && letter != '\n') || byte == 0x7F || (byte >= 0x80 && !isUtf8) ? '?' : letter;
    }
  }
  return escaped;
}

std::string Attribute(const char* name, const std::string& value) {
  return std::string(" ") + name + "=\"" + Escaped(value) + "\"";
}

std::string Time(double seconds) {
  char text[32];
  std::snprintf(text, sizeof(text), "%.3f", seconds);
  return Attribute("time", text);
}

std::string CaseOf(const CheckResult& result, const BundleResult& bundle) {
  const Outcome& outcome = result.outcome;
  const std::string begin = "    <testcase" + Attribute("classname", bundle.plan.bundle) +
                            Attribute("name", result.check->id) + Time(outcome.seconds);
  if (outcome.end == Outcome::End::kPassed) return begin + "/>\n";
  if (outcome.end == Outcome::End::kSkipped) {
    return begin + "><skipped" + Attribute("message", outcome.seen) + "/></testcase>\n";
  }
  return begin + "><failure" + Attribute("message", SeenBy(outcome)) + ">" + Escaped(TextOf(result, bundle.plan)) +
         "</failure></testcase>\n";
}

}  // namespace

std::string JUnitReport(const std::vector<BundleResult>& results) {
  std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n";
  for (const BundleResult& bundle : results) {
    xml += "  <testsuite" + Attribute("name", bundle.plan.bundle) +
           Attribute("tests", std::to_string(bundle.checks.size())) +
           Attribute("failures", std::to_string(bundle.Failed())) +
           Attribute("skipped", std::to_string(bundle.Skipped())) + Time(bundle.seconds) + ">\n";
    for (const CheckResult& check : bundle.checks) xml += CaseOf(check, bundle);
    xml += "  </testsuite>\n";
  }
  return xml + "</testsuites>\n";
}

}  // namespace host::validator
