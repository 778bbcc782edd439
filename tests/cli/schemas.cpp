#include "schemas.h"

#include <nlohmann/json.hpp>
#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validation_results.hpp>
#include <valijson/validator.hpp>

#include "temporary_files.h"

testing::AssertionResult validates(const std::string& text, const std::string& schemaFile) {
  using Adapter = valijson::adapters::NlohmannJsonAdapter;
  const nlohmann::json schemaText = nlohmann::json::parse(bytesOf(schemaFile));
  const nlohmann::json value = nlohmann::json::parse(text, nullptr, false);
  if (value.is_discarded()) return testing::AssertionFailure() << "this is no JSON: " << text;
  valijson::Schema schema;
  valijson::SchemaParser().populateSchema(Adapter(schemaText), schema);
  valijson::Validator validator;
  valijson::ValidationResults results;
  if (validator.validate(schema, Adapter(value), &results)) return testing::AssertionSuccess();
  testing::AssertionResult failure = testing::AssertionFailure();
  for (const valijson::ValidationResults::Error& error : results) {
    for (const std::string& step : error.context)
      failure << step;
    failure << ": " << error.description << "\n";
  }
  return failure;
}
