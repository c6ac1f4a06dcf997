// What `vmcore port --help` says.
#pragma once

namespace vm::tool {

constexpr const char* kPortHelp =
    R"(Helps to bring the sources of a Windows program over. In the library's sources
docs/porting.md has the way of a port, everything that differs, and what to use
instead of what is missing.

  vmcore port scan ~/src/myprogram | less)";

constexpr const char* kPortScanHelp =
    R"(Lists the names of the Win32 and MFC interfaces that the files use: classes and
their members, functions, constants, messages, macros, headers.
  missing     not in the library; with what to use instead
  unknown     looks like a name of the interfaces and is in no table; counted as
              missing
  difference  there, with a difference, and what to do about it
  there       as the program expects it

Each with the number of uses and the first place; with --lines each use as
'FILE:LINE: SEVERITY: STATE: NAME: TEXT', what is there only with --notes.

Files: .c .cc .cpp .cxx .h .hh .hpp .hxx .inl in UTF-8, UTF-16 with its mark, or
any 8-bit encoding, up to 16 MB. Left out are the folders of version control
(.git .svn .hg .bzr CVS _darcs), of builds and editors (build, build-*,
cmake-build-*, Debug, Release, obj, ipch, .vs, .vscode, node_modules, and any
with a CMakeCache.txt) and links to folders. Resource scripts: vmcore rc.

Nothing is preprocessed: all branches of an #if count, but not #if 0. What the
tree declares itself is its own. A member counts when its object's class can be
told from a declaration or a cast, or when the name says enough; how many
cannot be told stands at the end.

Exit status: 0 well; 1 with --strict, when something is missing or unknown; 2
something could not be read, or there is no C++ file.)";

} // namespace vm::tool
