# SPDX-License-Identifier: MIT
# Runs at installation: lays the public headers out as other programs include them, <vantor/CpuDetect/CpuDetect.hpp> and
# <vantor/platform/sysctl/SysctlSource.hpp>, as the namespaces are. In the tree they include each other from its root,
# under names that another project may use as well. SOURCE, STAGE and HEADERS (relative to SOURCE) are set.
file(REMOVE_RECURSE "${STAGE}")
foreach(header IN LISTS HEADERS)
  file(READ "${SOURCE}/${header}" text)
  string(REPLACE "#include \"sysinfo/" "#include \"vantor/" text "${text}")
  string(REPLACE "#include \"platform/" "#include \"vantor/platform/" text "${text}")
  string(REPLACE "#pragma once\n" "#pragma once\n\n#include \"vantor/LanguageLevel.hpp\"\n" text "${text}")
  string(REGEX REPLACE "^sysinfo/" "" public "${header}")
  file(WRITE "${STAGE}/vantor/${public}" "${text}")
endforeach()
file(COPY "${CMAKE_CURRENT_LIST_DIR}/LanguageLevel.hpp" DESTINATION "${STAGE}/vantor")
