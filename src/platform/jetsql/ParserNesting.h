#pragma once

#include "platform/jetsql/Error.h"
#include "platform/jetsql/Parser.h"

namespace jetsql {

/// Counts how deep the parser has gone, so that no text can exhaust the stack.
class ParserNesting {
 public:
  explicit ParserNesting(Parser& parser) : parser_(parser) {
    if (parser_.nesting_ >= kDeepestNesting) throw error::tooComplex();
    ++parser_.nesting_;
  }
  ~ParserNesting() { --parser_.nesting_; }
  ParserNesting(const ParserNesting&) = delete;
  ParserNesting& operator=(const ParserNesting&) = delete;

 private:
  Parser& parser_;
};

}  // namespace jetsql
