#include "ffb/forms/ForceChain.h"

#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace tvx {
namespace {

constexpr std::int64_t kOldestShown = 9999;  // ms

QString Milliseconds(std::optional<std::int64_t> ms) {
  return ms ? QString::number(std::clamp<std::int64_t>(*ms, 0, kOldestShown)) + " ms" : QStringLiteral("--");
}

}  // namespace

ForceChain::ForceChain(const QByteArray& number) {
  const QString widest =
      tr("Limit %1 %   Values %2 old   Reply after %3, %4 old").arg("100", "9999 ms", "999 ms", "9999 ms");
  bars_ = new ForceBars("BarsForces" + number);
  words_ = MakeLabel("LabelChain" + number);
  words_->setMinimumWidth(words_->fontMetrics().horizontalAdvance(widest));
  words_->setToolTip(
      tr("The limit of all forces together; how old the simulator's oldest value is that they need; how long "
         "the yoke took for its last reply, and how old that is."));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(look::Gap() / 2);
  column->addWidget(bars_);
  column->addWidget(words_);
}

void ForceChain::Refresh(const YokePair& pair, int which) {
  const Yoke& yoke = pair.Of(which);
  const ForceBars::View view = ForceBars::ViewOf(yoke);
  bars_->Show(view);
  const auto age = yoke.Line().ReplyAgeMs();
  const auto took = age ? std::optional(yoke.Line().ReplyTookMs()) : std::nullopt;
  const auto values = pair.Running() ? pair.Ports().AgeMs() : std::nullopt;
  const QString words = tr("Limit %1 %   Values %2 old   Reply after %3, %4 old")
                            .arg(QString::number(std::lround(100 * view.limit)), Milliseconds(values),
                                 Milliseconds(took), Milliseconds(age));
  SetTextIfChanged(words_, words);
}

}  // namespace tvx
