#!/usr/bin/env bash
# Installs the build in $1 into a temporary prefix as a user would (stripped), checks what landed
# there, runs the installed program, and has CPack make the .deb, whose dependencies must come from
# the libraries the program and its modules link.
set -euo pipefail
build=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

fail() { echo "FAILED: $*" >&2; exit 1; }

cmake --install "$build" --prefix "$prefix" --strip >/dev/null
for file in bin/tsaw share/tsaw/sample/TSA/Wizard/TSaW.ini share/applications/tsaw.desktop \
            share/icons/hicolor/scalable/apps/tsaw.svg share/man/man1/tsaw.1 \
            share/bash-completion/completions/tsaw share/zsh/vendor-completions/_tsaw \
            share/doc/tsaw/README.md share/doc/tsaw/LICENSE; do
  [ -f "$prefix/$file" ] || fail "not installed: $file"
done
module=$(find "$prefix" -name TSaW.tsa)
[ -n "$module" ] || fail "the plug-in module TSaW.tsa was not installed"
window_module=$(dirname "$module")/tsaw-gui.so
[ -f "$window_module" ] || fail "the window module was not installed beside TSaW.tsa"
for binary in "$prefix/bin/tsaw" "$module" "$window_module"; do
  if readelf -S "$binary" | grep -q '\.debug_info'; then fail "not stripped: $binary"; fi
done

# The installed program runs, finds its sample data on first run, and its lint finds the shipped
# good templates clean.
unset TESSERA_ROOT
export HOME=$work/home XDG_DATA_HOME=$work/data XDG_STATE_HOME=$work/state XDG_CONFIG_HOME=$work/config
"$prefix/bin/tsaw" --version | grep -qx "tsaw [0-9.]*" || fail "tsaw --version"
listing=$("$prefix/bin/tsaw" templates 2>/dev/null)
grep -q "^4 Templates (3 good and 1 bad)" <<<"$listing" || fail "tsaw templates on the seeded root: $listing"
out=$("$prefix/bin/tsaw" lint "$XDG_DATA_HOME/tessera/TSA/Wizard/Templates/Plug-ins/Single Plugin" 2>&1) ||
  fail "tsaw lint on a shipped template: $out"
[ -z "$out" ] || fail "tsaw lint on a shipped template: $out"
# The installed program finds both modules in the library folder and steps through the window.
out=$("$prefix/bin/tsaw" gui --screenshots "$work/shots" 2>&1) || fail "tsaw gui --screenshots: $out"
[ -f "$work/shots/creation.png" ] || fail "tsaw gui --screenshots wrote no picture of the last page"

# The man page is the help text; the completion offers the commands of the help text.
grep -q "validate" "$prefix/share/man/man1/tsaw.1" || fail "the man page lacks the commands"
completions=$(PATH=$prefix/bin:$PATH bash -c 'source "$1"; COMP_WORDS=(tsaw va); COMP_CWORD=1; _tsaw; echo "${COMPREPLY[*]}"' \
              _ "$prefix/share/bash-completion/completions/tsaw")
[ "$completions" = "validate" ] || fail "bash completion of 'tsaw va': '$completions'"
completions=$(PATH=$prefix/bin:$PATH bash -c 'source "$1"; COMP_WORDS=(tsaw create --sa); COMP_CWORD=2; _tsaw; echo "${COMPREPLY[*]}"' \
              _ "$prefix/share/bash-completion/completions/tsaw")
[ "$completions" = "--save-job" ] || fail "bash completion of 'tsaw create --sa': '$completions'"
grep -q "^Exec=tsaw gui$" "$prefix/share/applications/tsaw.desktop" || fail "the menu entry does not open the window"

# The .deb: its dependencies are those of the linked libraries.
(cd "$build" && cpack -B "$work/deb" >"$work/cpack.log" 2>&1) || fail "cpack: $(cat "$work/cpack.log")"
deb=$(find "$work/deb" -maxdepth 1 -name 'tsaw_*.deb')
[ -n "$deb" ] || fail "cpack made no .deb"
depends=$(dpkg-deb -f "$deb" Depends)
for library in libc6 libstdc++6 libqt6widgets6; do
  grep -q "$library" <<<"$depends" || fail "the .deb does not depend on $library: $depends"
done
contents=$(dpkg-deb -c "$deb")
grep -q "\./usr/bin/tsaw$" <<<"$contents" || fail "the .deb lacks /usr/bin/tsaw"
grep -q "/tsaw/tsaw-gui\.so$" <<<"$contents" || fail "the .deb lacks the window module"
