# list_files PATTERN...: the project's files whose names match, one a line.
# Sourced; the working directory is the project's.
list_files() {
  if git rev-parse --git-dir >/dev/null 2>&1; then
    git ls-files --cached --others --exclude-standard -- "$@" | while IFS= read -r file; do
      if [ -f "$file" ]; then printf '%s\n' "$file"; fi
    done
  else
    local name tests=()
    for name in "$@"; do tests+=(-o -name "$name"); done
    find . -path ./build -prune -o -path ./.git -prune -o -type f \( "${tests[@]:1}" \) -print |
      sed 's|^\./||' | sort
  fi
}
