// Places for people.
#pragma once

#include "base/passing_ui.h"
#include "model/project.h"

namespace quorvelant {

// Adds the name of the track to places that are keys of one: "Track.0.Audio1 (Film)". Keys count from 0 and
// tell little; programs take them as they are.
class PlaceNames : public PassingUi {
 public:
  PlaceNames(UserInterface& ui, const Project& project) : PassingUi(ui), project_(&project) {}

  void Tell(const Message& message) override;

 private:
  const Project* project_;
};

}  // namespace quorvelant
