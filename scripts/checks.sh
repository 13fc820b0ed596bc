# shellcheck shell=bash
# Checks that need no build: what ./test check and .ci/run share. To be sourced after common.sh, from
# the project's root.

tracked() { git ls-files -z --cached --others --exclude-standard --deduplicate -- "$@"; }

source_is_laid_out() {
    tracked '*.cpp' '*.h' | while IFS= read -r -d '' file; do
        [[ ! -f $file ]] || printf '%s\0' "$file"
    done | xargs -0 -n 40 -P "$(nproc)" clang-format --dry-run -Werror ||
        fail "clang-format would lay out the files above in another way; run clang-format -i on them."
}

scripts_are_clean() {
    shellcheck -x run test .ci/run scripts/common.sh scripts/checks.sh scripts/fuzz \
        scripts/install-packages || fail "shellcheck finds fault with the scripts; its words are above."
}

# linter OPTION...: clang-tidy, by default over what has changed; scripts/lint.py tells the options.
linter() { python3 scripts/lint.py "$@" || exit 1; }
# branch_begin: the commit at which this branch left main; on main itself the last one.
branch_begin() { git merge-base HEAD main 2>/dev/null || say HEAD; }
