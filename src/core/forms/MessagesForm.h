// The last 1000 things that the program said, to look at and to copy.
#pragma once

#include "core/watch/SaidLog.h"
#include "ui/Form.h"
#include "ui/LineList.h"

namespace tvx {

class MessagesForm : public Form {
  Q_OBJECT
 public:
  explicit MessagesForm(SaidLog& log);

 private:
  SaidLog& log_;
  LineList* ListMessages;
};

}  // namespace tvx
