#include "shared/mdMain.h"

namespace mdMain {

std::u16string strAddedDesc;
std::u16string strAddedId;

}  // namespace mdMain
