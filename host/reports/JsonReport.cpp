#include "host/listings/JsonWriter.h"
#include "host/reports/Report.h"

namespace host::validator {
namespace {

void WriteCheck(const CheckResult& result, const TrialPlan& plan, JsonWriter* json) {
  const Outcome& outcome = result.outcome;
  json->BeginObject();
  json->String("id", result.check->id);
  json->String("result", WordFor(outcome));
  json->Number("seconds", outcome.seconds);
  if (outcome.end == Outcome::End::kSkipped) json->String("reason", outcome.seen);
  if (outcome.IsFailure()) {
    json->String("asked", result.check->asks);
    json->String("done", outcome.operations != 0 ? outcome.history : outcome.doing);
    json->String("expected", ExpectedBy(outcome));
    json->String("seen", SeenBy(outcome));
    if (outcome.end == Outcome::End::kKilled) json->Integer("signal", outcome.number);
    if (outcome.step) json->Integer("step", static_cast<long long>(*outcome.step));
    json->Key("calls");
    json->BeginArray();
    for (const std::string& call : outcome.calls) json->String(call);
    json->EndArray();
    json->String("printed", outcome.output);
    json->String("repeat", RepeatLine(result, plan));
  }
  json->EndObject();
}

}  // namespace

std::string JsonReport(const std::vector<BundleResult>& results) {
  JsonWriter json;
  json.BeginObject();
  json.Key("bundles");
  json.BeginArray();
  for (const BundleResult& result : results) {
    json.BeginObject();
    json.String("bundle", result.plan.bundle);
    json.Integer("level", result.plan.level);
    json.Integer("seed", static_cast<long long>(result.plan.seed));
    json.Integer("passed", static_cast<long long>(result.Passed()));
    json.Integer("failed", static_cast<long long>(result.Failed()));
    json.Integer("skipped", static_cast<long long>(result.Skipped()));
    json.Number("seconds", result.seconds);
    json.Key("checks");
    json.BeginArray();
    for (const CheckResult& check : result.checks) WriteCheck(check, result.plan, &json);
    json.EndArray();
    json.EndObject();
  }
  json.EndArray();
  json.EndObject();
  return json.Line();
}

}  // namespace host::validator
