# The reader's theme has a folder, and the description in the page is the example's.
mkdir mine
diff <(sed -n '/^```toml/,/^```$/p' "$DOCS/wizard.md" | sed -n '2,/^```$/p' | sed '/^```$/d') examples/wizard.toml
