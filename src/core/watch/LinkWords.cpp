#include "core/watch/LinkWords.h"

namespace tvx {

std::string SimulatorLinkWords(const SimulatorLinkState& state, bool& trouble) {
  trouble = false;
  if (!state.SocketOpen && !state.SocketError.empty()) {
    trouble = true;
    return "X-Plane link closed: " + state.SocketError;
  }
  if (!state.Running) return "X-Plane link halted. Press Run to fly.";
  if (state.SilentMs < kSilentAfterMs) {
    return state.EverAnswered ? "X-Plane is answering"
                              : "X-Plane has been asked; waiting for its first answer";
  }
  trouble = true;
  const std::string silence = "X-Plane silent for " + std::to_string(state.SilentMs / 1000) + " s. ";
  if (state.EverAnswered)
    return silence + "Is it still running? Its values are asked for again until it answers.";
  return silence + "Nothing has come from " + state.RemoteHost + " port " + state.RemotePort + " to port " +
         state.LocalPort + ": is X-Plane running, and does it accept incoming connections?";
}

}  // namespace tvx
