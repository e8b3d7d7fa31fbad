#include "virtualcockpit/bus/GaugeBusLine.h"

namespace tvx::vc {
namespace {

constexpr int kTickMs = 50;

}  // namespace

GaugeBusLine::GaugeBusLine(std::string link, QObject* parent)
    : HardwareLine(std::move(link), kTickMs, Unplugged::Stands, parent),
      bus_([this](ByteView bytes) { Write(bytes); }) {}

}  // namespace tvx::vc
