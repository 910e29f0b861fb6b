#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace xov::cli {

/// A value as the command line knows it.
template <typename Value>
struct NamedValue {
  const char* name;
  Value value;
};

template <typename Value, std::size_t count>
std::vector<std::string> namesOf(const NamedValue<Value> (&rows)[count]) {
  std::vector<std::string> names;
  for (const NamedValue<Value>& row : rows)
    names.emplace_back(row.name);
  return names;
}

/// `otherwise` for a name that is none.
template <typename Value, std::size_t count>
Value valueNamed(const NamedValue<Value> (&rows)[count], const std::string& name, Value otherwise) {
  const auto* const row =
      std::find_if(std::begin(rows), std::end(rows), [&](const auto& candidate) { return candidate.name == name; });
  return row == std::end(rows) ? otherwise : row->value;
}

} // namespace xov::cli
