// The one walk of the live structure: removed elements are passed over.
#pragma once

#include <vector>

#include "model/collection.h"

namespace quorvelant {

// The live elements of a collection, in order.
template <class T>
std::vector<const T*> Live(const Collection<T>& collection) {
  std::vector<const T*> live;
  for (const T& element : collection) {
    if (!element.Removed) {
      live.push_back(&element);
    }
  }
  return live;
}

}  // namespace quorvelant
