#pragma once

#include <string>

/// The variables of the start-up module that outlive the screens. Its procedure stands above the
/// editors, in shared/startup.
namespace mdMain {

/// Description of the product last added, empty while none was. Never emptied again.
extern std::u16string strAddedDesc;
/// Id, as text, of that product.
extern std::u16string strAddedId;

}  // namespace mdMain
