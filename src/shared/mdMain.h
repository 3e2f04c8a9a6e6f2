#pragma once

#include <string>

/// The variables of the start-up module that outlive the screens. The module's procedure is in
/// shared/startup, above the editors.
namespace mdMain {

/// Description of the product last added, empty before the first. Never emptied again.
extern std::u16string strAddedDesc;
/// Id, as text, of that product.
extern std::u16string strAddedId;

}  // namespace mdMain
