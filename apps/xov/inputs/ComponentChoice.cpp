#include "apps/xov/inputs/ComponentChoice.h"

namespace xov::cli {

void ComponentChoice::addOption(const Options& options, const std::string& help, const std::string& typeName) {
  options.add("--components", codes_, help).typeName(typeName).takesExactly(3);
}

Result<ThreeComponents> ComponentChoice::of(const SeismogramArray& records) const {
  QStringList codes;
  for (const std::string& code : codes_)
    codes.append(QString::fromStdString(code));
  Result<ThreeComponents> components = pickComponents(records, codes);
  if (!components) return Error{components.error() + QStringLiteral("; --channels and --components choose others")};
  return components;
}

} // namespace xov::cli
