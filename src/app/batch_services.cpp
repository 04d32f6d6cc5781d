#include "app/batch_services.h"

namespace quorvelant {

namespace {

constexpr std::string_view NotBuiltTitle = "Not built yet";
constexpr std::string_view NoReader = "This build cannot read project scripts";
constexpr std::string_view NoDriver = "This build cannot author discs";

}  // namespace

BatchServices MakeBatchServices(UserInterface& ui) {
  BatchServices services;
  services.LoadScriptFile = [&ui](const std::string& script, bool, Project&) {
    TellError(ui, NotBuiltTitle, NoReader, script);
    return false;
  };
  services.Author = [&ui](Project&, const Settings&, bool, Log&) {
    TellError(ui, NotBuiltTitle, NoDriver);
    return false;
  };
  return services;
}

}  // namespace quorvelant
