# What Doxygen reads of a header: its first comment is the file's and, in a header named after its class, the class's
# too; members that the compiler makes or that are deleted have nothing to tell unless somebody does. No line moves.
FNR == 1 {
  head = /^\/\/ /
  above = ""
  name = FILENAME
  sub(/.*\//, "", name)
  sub(/\.h$/, "", name)
}
head && /^\/\// {
  print "/" $0
  next
}
head {
  head = 0
  if (/^#pragma once/) {
    print "/// @file"
    next
  }
}
/= (delete|default);/ && !/operator(==|<=>)/ && above !~ /\/\/\// { $0 = "" }
$0 ~ "^(class|struct) " name "( |$)" && !/;/ && above !~ /\/\/\// { $0 = "/** @copydoc " name ".h */ " $0 }
{
  print
  above = $0
}
