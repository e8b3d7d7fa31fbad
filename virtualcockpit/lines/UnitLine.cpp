#include "virtualcockpit/lines/UnitLine.h"

namespace tvx::vc {
namespace {

constexpr int kTickMs = 40;

}  // namespace

UnitLine::UnitLine(Unit& unit, std::string link, QObject* parent)
    : HardwareLine(std::move(link), kTickMs, Unplugged::Stands, parent), unit_(unit) {
  unit_.SetWrite([this](ByteView bytes) { Write(bytes); });
}

UnitLine::~UnitLine() {
  Unplug();
  unit_.SetWrite({});
}

}  // namespace tvx::vc
