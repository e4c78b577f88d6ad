-- The pages link to each other by their Markdown names, which read in the source tree and on a
-- code host; the rendered pages link to the rendered ones.
function Link(link)
  if not link.target:match("^%a+:") then
    link.target = link.target:gsub("%.md$", ".html"):gsub("%.md#", ".html#")
  end
  return link
end
