#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The house rules that a script can check: rules.sh TOP. Prints each breach and fails if there was one.
set -euo pipefail
cd "$1"
breaches=0
breach() {
  echo "$1"
  breaches=$((breaches + 1))
}

mapfile -t files < <(find CMakeLists.txt cmake .ci scripts platform logging settings metrics charts controller pages actions fleet sysinfo \
  hosts resources packaging tests bench fuzz examples -type f \
  \( -name '*.?pp' -o -name CMakeLists.txt -o -name '*.cmake' -o -name '*.sh' -o -name '*.py' -o -path '.ci/*' -o -path 'scripts/*' \) \
  2>/dev/null | sort)
((${#files[@]} > 50)) || breach "only ${#files[@]} files found: is this the project's root?"

for file in "${files[@]}"; do
  head -n 3 "$file" | grep -q 'SPDX-License-Identifier: MIT' || breach "$file: no SPDX line"
  lines=$(wc -l <"$file")
  case $file in
  tests/* | fuzz/* | bench/*) ;;
  *.hpp) ((lines <= 120)) || breach "$file: $lines lines; a header holds one idea in under 120" ;;
  resources/*Texts.cpp) ;; # a table, a line a text
  *.cpp) ((lines <= 300)) || breach "$file: $lines lines; a source holds one idea in under 300" ;;
  esac
done

# Below the hosts and outside the Linux machine and the network only the standard library's headers are known.
standard=' algorithm any array atomic bit cassert cctype cerrno cfenv cfloat charconv chrono cinttypes climits clocale cmath
 compare complex concepts condition_variable csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cwchar deque exception
 filesystem fstream functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map
 memory memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex semaphore set shared_mutex
 source_location span sstream stdexcept stop_token streambuf string string_view syncstream system_error thread tuple type_traits
 typeindex typeinfo unordered_map unordered_set utility variant vector version '
standard=${standard//$'\n'/}
while IFS=: read -r file header; do
  [[ $standard == *" $header "* ]] || breach "$file: <$header> is no header of the standard library"
done < <(grep -rHoE '^#include <[^>]+>' platform logging settings metrics charts controller pages actions fleet sysinfo --include='*.?pp' |
  grep -vE '^(platform/linux|platform/posix|platform/remote/fetch|sysinfo/program)/' |
  grep -vE '^platform/propertylist/ExpatParser.[ch]pp:#include <expat.h>|^(sysinfo/SystemValues/RecordingText|platform/remote/answers/QueryAnswer).cpp:#include <nlohmann/json.hpp>|<cpuid.h>' |
  sed -E 's/#include <([^>]+)>/\1/')

grep -rn '#include "platform/linux' --include='*.?pp' hosts | grep -vE '^hosts/common/Host(Disposal|Machine|MemoryAlarm|Viewer|Workload).cpp:' &&
  breach "hosts know the Linux machine and its user through the files hosts/common/Host*.cpp alone"
grep -rnE '#include ("platform/(linux/(kernel/[^TA]|[^fk])|posix)|<(sys/|unistd|fcntl|fstream|cstdio))' --include='*.?pp' \
  platform/linux/figures && breach "platform/linux/figures turns text into records and opens nothing"

# The calls of a system are written with a leading "::". Two files need POSIX: the zone's offset from universal time, and
# numbers from text in the C locale.
grep -rnE '(^|[^A-Za-z0-9_>:])::[a-z]' platform logging settings metrics charts controller pages actions fleet sysinfo --include='*.?pp' |
  grep -vE '^platform/(linux|posix|remote/fetch)/|^sysinfo/program/|^platform/foundation/(DateText|ParseDouble).cpp:|::operator ' &&
  breach "only platform/linux, platform/posix and hosts call the system"

grep -rnE '#include "\.\.?/' --include='*.?pp' platform logging settings metrics charts controller pages actions fleet sysinfo hosts &&
  breach "includes are written from the root of the tree"
grep -rnE '\b(system|popen|execlp|execvp|posix_spawnp|wordexp|startDetached|findExecutable) ?\(|\bQProcess\b' --include='*.?pp' platform logging settings metrics charts controller pages actions fleet \
  sysinfo hosts && breach "no shell, and no search for programs by name, anywhere"
((breaches == 0))
