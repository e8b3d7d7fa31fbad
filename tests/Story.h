// Tests as stories: steps in words, done one after the other, as in "begin 2; ticks 20; running = false".
#pragma once

#include "tests/Test.h"

namespace tvx {

// A step is a verb and what it takes; behind " = " stands what it has to return. A step in brackets is a
// remark. A step that goes wrong is shown with the story up to it.
struct Story {
  // Does a step: a lambda that takes numbers, and last the rest of the step as a text. It returns nothing, or
  // a value that can be put into a stream, or Texts, which are shown with ", " between them.
  class Verb {
   public:
    template <typename Act>
    Verb(Act act) : act_([act](const std::string& words) { return Call(act, &Act::operator(), words); }) {}
    std::string Do(const std::string& words) const { return act_(words); }

   private:
    template <typename Act, typename Result, typename... Args>
    static std::string Call(const Act& act, Result (Act::*)(Args...) const, const std::string& words) {
      std::istringstream in(words);
      const std::tuple<std::decay_t<Args>...> taken{Next<std::decay_t<Args>>(in)...};
      if constexpr (!std::is_void_v<Result>) {
        return Shown(std::apply(act, taken));
      } else {
        std::apply(act, taken);
        return {};
      }
    }
    template <typename Value>
    static Value Next(std::istringstream& in) {
      std::string words;
      if constexpr (std::is_same_v<Value, std::string>) {
        std::getline(in >> std::ws, words);
        return words;
      } else {
        in >> words;
        return static_cast<Value>(std::stod(words));
      }
    }
    template <typename Value>
    static std::string Shown(const Value& value) {
      std::ostringstream out;
      if constexpr (std::is_same_v<Value, Texts>) {
        for (const std::string& text : value) out << (out.tellp() > 0 ? ", " : "") << text;
      } else {
        out << std::boolalpha << value;
      }
      return out.str();
    }
    std::function<std::string(const std::string&)> act_;
  };

  // More verbs; one whose name there is already takes its place.
  void Can(std::map<std::string, Verb> more) {
    more.merge(verbs);
    verbs = std::move(more);
  }
  // The names of those that are true.
  static Texts Those(std::initializer_list<std::pair<const char*, bool>> all) {
    Texts names;
    for (const auto& [name, is] : all) {
      if (is) names.emplace_back(name);
    }
    return names;
  }

  void Play(const std::string& story) const {
    for (std::size_t begin = 0, end = 0; begin < story.size(); begin = end + 2) {
      end = std::min(story.find("; ", begin), story.size());
      const std::string step = story.substr(begin, end - begin), does = step.substr(0, step.find(" ="));
      if (step.starts_with('(')) continue;
      SCOPED_TRACE(story.substr(0, end));
      const std::size_t space = std::min(does.find(' '), does.size());
      const auto verb = verbs.find(does.substr(0, space));
      ASSERT_NE(verb, verbs.end()) << does;
      const std::string told = verb->second.Do(does.substr(space));
      const std::string expected = does == step ? "" : step.substr(std::min(does.size() + 3, step.size()));
      EXPECT_EQ(told, expected);
    }
  }

  std::map<std::string, Verb> verbs;
};

}  // namespace tvx
