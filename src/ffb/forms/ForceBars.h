// What a yoke's forces are made of now: for each axis a bar of its sources, one on the other, with the limit;
// and how far the gate is open.
#pragma once

#include <array>

#include "ffb/Yoke.h"
#include "ui/PaintedOnce.h"

namespace tvx {

class ForceBars : public PaintedOnce {
 public:
  explicit ForceBars(const char* name);

  // Shares of what the yoke can give, 0..1.
  struct View {
    std::array<ForceSources, kAxes> axes{};
    bool servo = false;  // the main force is a servo's, not a spring's
    double limit = 0;    // of everything together
    double gate = 0;
    bool operator==(const View&) const = default;
  };
  // As the yoke is commanded now; all zero where it gives no force.
  static View ViewOf(const Yoke& yoke);
  // Repaints only where a pixel changes.
  void Show(const View& view);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void PaintStill(QPainter& painter) const override;
  void PaintMoving(QPainter& painter) const override;

 private:
  static constexpr int kBars = 3;
  static constexpr int kSources = 4;
  QRect BarOf(int bar) const;
  int Pixels(double share) const;
  // The right ends of what a bar shows, in pixels, and the limit's mark: what is compared.
  using Ends = std::array<std::array<int, kSources + 1>, kBars>;
  Ends EndsOf(const View& view) const;
  void DrawLegend(QPainter& painter) const;

  View view_;
  Ends shown_{};
};

}  // namespace tvx
