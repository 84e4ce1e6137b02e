// Put at the beginning of a report's copy: uses the page as its reader would and writes down what it
// sees, as JSON in an element of its own.
const errors = [];
addEventListener("error", (event) => errors.push(String(event.message)));
addEventListener("load", () => {
  const find = (selector) => [...document.querySelectorAll(selector)];
  const files = () => find("tbody th").map((cell) => cell.firstChild.data);
  const texts = (row) => [...row.cells].map((cell) => cell.textContent);
  const heading = (name) => find("thead button").find((button) => button.textContent === name);
  const sorts = () => ["File", "ISO"].map((name) => heading(name).parentElement.ariaSort);
  const choose = (id, value) => {
    const control = document.getElementById(id);
    control.value = value;
    control.dispatchEvent(new Event("input", {bubbles: true}));
    const shown = files();
    if (id !== "filter-text" || value !== "no such photo") {
      document.getElementById("filters").reset();
    }
    return shown;
  };

  const findings = {
    title: document.title,
    files: files(),
    cells: find("tbody tr").map(texts),
    plots: find("#plots svg").map((plot) => plot.getAttribute("aria-label")),
    previews: find("tbody img").map((image) => ({
      isLoaded: image.complete && image.naturalWidth > 0,
      turn: [...image.parentElement.classList].at(-1),
    })),
    clicks: {files: [files()], sorts: [sorts()]},
  };
  for (let click = 0; click < 2; ++click) {
    heading("ISO").click();
    findings.clicks.files.push(files());
    findings.clicks.sorts.push(sorts());
  }
  heading("File").click();
  findings.filters = {
    text: choose("filter-text", "nikon B.JPG"),
    camera: choose("filter-camera", "Canon EOS 6D"),
    rating: choose("filter-rating", "4"),
    nothing: choose("filter-text", "no such photo"),
    count: document.getElementById("count").textContent,
  };
  document.getElementById("filters").reset();
  findings.filters.reset = files();
  findings.errors = errors;

  const written = document.createElement("pre");
  written.id = "findings";
  // Beyond ASCII, and what markup consists of, as JSON escapes.
  written.textContent = JSON.stringify(findings).replace(
    /[<>&\u0080-\uffff]/g, (c) => `\\u${c.charCodeAt(0).toString(16).padStart(4, "0")}`);
  document.body.append(written);
});
