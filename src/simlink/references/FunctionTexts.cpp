#include "simlink/references/FunctionTexts.h"

namespace tvx {

std::string WholeNumberWords(int lowest, int highest) {
  return "a whole number from " + std::to_string(lowest) + " to " + std::to_string(highest);
}

}  // namespace tvx
