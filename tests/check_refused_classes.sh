#!/usr/bin/env bash
# Classes of plug-ins that must not compile, each with a word of what the compiler says:
# check_refused_classes.sh SOURCE_FOLDER COMPILER
set -eu
source=$1
compiler=$2
failures=0

# compile ID BODY [OTHER]: a class of that ID with those members and those of a second base, and its registration.
compile() {
  "$compiler" -std=c++20 -fsyntax-only -I"$source" -I"$source/platform/include" -x c++ - 2>&1 <<END
#include "kit/AKClassBasicTypes.h"
struct Other {
  ${3:-}
};
class Mine : public AKObjectClass<Mine, AKObjectSymbolVect>, public Other {
 public:
  static constexpr char kClassID[] = "$1";
  static constexpr char kClassName[] = "Mine";
  static constexpr char kLocaleDomain[] = "Mine";
  static const char* DisplayName();
  $2
};
int Register(void* host, AKClass** record) { return Mine::Register(host, record); }
END
}

compile mine 'int akmDelete() { return Other::akmDelete(); }' 'int akmDelete();' || { echo "FAULT: a right class does not compile"; exit 1; }

# refuse WORD ID BODY [OTHER]
refuse() {
  local said
  if said=$(compile "$2" "$3" "${4:-}"); then
    echo "FAULT: compiles: $2 $3"
  elif ! grep -q "$1" <<< "$said"; then
    printf 'FAULT: no "%s" is said of: %s\n%s\n' "$1" "$3" "$said"
  else
    return 0
  fi
  failures=$((failures + 1))
}
refuse "at most 7 characters" toolong1 ''
refuse "wrong parameters" mine 'int akmDraw(const AGContext&, const AKDrawEvent&);'
refuse "wrong parameters" mine 'int akmInitFromFile(const AKFile&);'
refuse "wrong parameters" mine 'void akmInitWithArgs(const AKArgs&);'
refuse "private" mine 'private: int akmWriteToFile(AKFile&) const;'
refuse "overload" mine 'int akmWriteToFile(AKFile&) const; int akmWriteToFile(AKFile&);'
refuse "inherited akm function" mine 'using Other::akmDelete;' 'int akmDelete();'
refuse "ambiguous" mine '' 'int akmDelete();'
[ "$failures" -eq 0 ] && echo "what must not compile does not"
exit "$failures"
