# For the readers' checks: a temporary folder with the sample practice, and the comparison of words.
# Sourced with the host program as "$1"; counts what is wrong in `wrong`.
set -u
host=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
wrong=0
"$host" demo-db practice.db >/dev/null || { echo "no sample practice"; exit 1; }

complain() { echo "$1"; wrong=$((wrong + 1)); }

# print_form CLASS KEY OPTION... -- ARGUMENT...: one form of the sample practice with these launcher properties.
print_form() {
  local class=$1 key=$2 options=()
  shift 2
  while [ "$1" != -- ]; do options+=(--set "$1"); shift; done
  shift
  "$host" print --db practice.db --class "$class" "${options[@]}" --set "PropCMasterID=$key" "$@"
}

# The words of a text: runs of Latin letters and digits. Readers may cut other scripts at their clusters.
words_of_text() { perl -CSD -0777 -ne 'print "$_\n" for /[\p{Latin}\p{Nd}]+/g' "$1" | sort -u; }

# The words of all boxes and labels of a page dump. Digits of other scripts than Latin are left to the text check.
words_of_pages() {
  perl -CSD -MJSON::PP -e '
    local $/; my $dump = decode_json(do { open my $f, "<:raw", shift or die; <$f> });
    for my $page (@{$dump->{pages}}) { print "$_->{text}\n" for grep { defined $_->{text} } @{$page->{items}} }' "$1" \
    >words.txt
  words_of_text words.txt
}

# same_words NAME FILE READER: every word of NAME.json is in the text file that a reader made.
same_words() {
  local missing
  missing=$(comm -23 <(words_of_pages "$1.json") <(words_of_text "$2"))
  [ -z "$missing" ] || complain "$1: $3 does not find: $(tr '\n' ' ' <<<"$missing")"
}

# browser ARGUMENT... FILE: headless Chromium with a profile of its own on a file of the working folder.
browser() {
  timeout 120 chromium --headless --no-sandbox --disable-gpu --disable-quic --no-first-run --hide-scrollbars \
    --disable-background-networking --disable-component-update --disable-sync "--user-data-dir=$work/browser" \
    "${@:1:$#-1}" "file://$work/${!#}" >/dev/null 2>&1 || complain "${!#}: the browser fails"
}
