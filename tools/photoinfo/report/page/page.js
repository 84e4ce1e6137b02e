
"use strict";

// Whatever comes from a photo is put into the page as text, never as markup.
(() => {
  const data = JSON.parse(document.getElementById("data").textContent);
  const photos = data.photos;
  const byId = (id) => document.getElementById(id);

  function make(name, properties = {}, ...children) {
    const element = document.createElement(name);
    Object.assign(element, properties);
    element.append(...children);
    return element;
  }

  function makeSvg(name, attributes = {}, text = "") {
    const element = document.createElementNS("http://www.w3.org/2000/svg", name);
    for (const [key, value] of Object.entries(attributes)) {
      element.setAttribute(key, value);
    }
    element.textContent = text;
    return element;
  }

  // At most two decimals, none that are zero.
  const decimal = (value) => String(Number(value.toFixed(2)));

  function showExposureTime(seconds) {
    if (seconds > 0 && seconds <= 0.25) {
      return `1/${Math.round(1 / seconds)} s`;
    }
    return `${decimal(seconds)} s`;
  }

  // "2021-07-04T18:30:05+02:00" as "2021-07-04 18:30"; another form as it is.
  function showDate(text) {
    const parts = /^(\d{4}-\d\d-\d\d)T(\d\d:\d\d)/.exec(text);
    return parts ? `${parts[1]} ${parts[2]}` : text;
  }

  function showRating(rating) {
    if (rating < 0) {
      return "rejected";
    }
    const stars = Math.round(rating);
    return stars <= 5 ? "★".repeat(stars) + "☆".repeat(5 - stars) : decimal(rating);
  }

  // Makers often begin the model's name with their own.
  function cameraOf(photo) {
    if (!photo.camera || !photo.maker) {
      return photo.camera || photo.maker;
    }
    const firstWord = photo.maker.split(" ")[0].toLowerCase();
    return photo.camera.toLowerCase().startsWith(firstWord)
      ? photo.camera
      : `${photo.maker} ${photo.camera}`;
  }

  // The folder stands in the title.
  function nameBelow(folder, file) {
    const isBelow = folder && file.startsWith(folder);
    return isBelow ? file.slice(folder.length).replace(/^[\\/]+/, "") : file;
  }

  for (const photo of photos) {
    photo.file = nameBelow(data.folder, photo.file);
    photo.camera = cameraOf(photo);
    photo.words = [photo.file, photo.camera, photo.lens, photo.taken].join("\n").toLowerCase();
  }

  const columns = [
    {key: "file", title: "File"},
    {key: "camera", title: "Camera", kind: "text"},
    {key: "lens", title: "Lens", kind: "text"},
    {key: "focalLength", title: "Focal length", kind: "number", show: (v) => `${decimal(v)} mm`},
    {key: "exposureTime", title: "Time", kind: "number", show: showExposureTime},
    {key: "fNumber", title: "Aperture", kind: "number", show: (v) => `f/${decimal(v)}`},
    {key: "iso", title: "ISO", kind: "number", show: decimal},
    {key: "taken", title: "Taken", show: showDate},
    {key: "rating", title: "Rating", show: showRating},
  ];

  // What is shown, and how; kept in the address behind "#", so that a view can be kept as a link.
  const state = {sort: "file", isDescending: false, text: "", camera: "", lens: "", rating: ""};

  function readAddress() {
    const wanted = new URLSearchParams(location.hash.slice(1));
    const sort = wanted.get("sort");
    state.sort = columns.some((column) => column.key === sort) ? sort : "file";
    state.isDescending = wanted.get("order") === "descending";
    for (const key of ["text", "camera", "lens", "rating"]) {
      state[key] = wanted.get(key) ?? "";
      const control = byId(`filter-${key}`);
      control.value = state[key];
      state[key] = control.value;
    }
  }

  function writeAddress() {
    const shown = new URLSearchParams();
    if (state.sort !== "file" || state.isDescending) {
      shown.set("sort", state.sort);
      shown.set("order", state.isDescending ? "descending" : "ascending");
    }
    for (const key of ["text", "camera", "lens", "rating"]) {
      if (state[key]) {
        shown.set(key, state[key]);
      }
    }
    history.replaceState(null, "", `#${shown}`);
  }

  function fits(photo) {
    const words = state.text.toLowerCase().split(/\s+/);
    return words.every((word) => photo.words.includes(word)) &&
      (!state.camera || photo.camera === state.camera) &&
      (!state.lens || photo.lens === state.lens) &&
      (!state.rating || (photo.rating ?? 0) >= Number(state.rating));
  }

  // Unknown values come last in both directions; equal ones in the order of their files.
  const collator = new Intl.Collator("en", {numeric: true});
  function compare(a, b) {
    const [first, second] = [a[state.sort], b[state.sort]];
    if (first === null || second === null) {
      return (first === null) - (second === null);
    }
    const order = typeof first === "number" ? first - second : collator.compare(first, second);
    return state.isDescending ? -order : order;
  }

  function previewOf(photo) {
    const cell = make("div", {className: "preview"});
    if (photo.preview) {
      const turn = photo.orientation ?? 1;
      if (turn >= 2 && turn <= 8) {
        cell.classList.add(`turned-${turn}`);
      }
      cell.append(make("img", {src: photo.preview, alt: "", loading: "lazy"}));
    } else {
      cell.append("no preview");
    }
    return make("td", {}, cell);
  }

  function cellOf(photo, column) {
    if (column.key === "file") {
      const cell = make("th", {scope: "row"}, photo.file);
      if (photo.error) {
        cell.append(make("div", {className: "error"}, photo.error));
      }
      return cell;
    }
    const cell = make("td", {className: column.kind ?? ""});
    const value = photo[column.key];
    if (value === null) {
      cell.append(make("span", {className: "unknown", ariaHidden: "true"}, "–"),
                  make("span", {className: "unseen"}, "unknown"));
    } else if (column.key === "rating") {
      cell.append(make("span", {className: "stars", ariaHidden: "true"}, showRating(value)),
                  make("span", {className: "unseen"}, decimal(value)));
    } else {
      cell.append(column.show ? column.show(value) : value);
    }
    return cell;
  }

  // Made once; sorting and filtering move rows.
  for (const photo of photos) {
    photo.row = make("tr", {}, previewOf(photo), ...columns.map((column) => cellOf(photo, column)));
  }

  function makeHeadings() {
    const headings = byId("headings");
    headings.append(make("th", {scope: "col"}, "Preview"));
    for (const column of columns) {
      const button = make("button", {type: "button"}, column.title);
      button.addEventListener("click", () => {
        state.isDescending = state.sort === column.key && !state.isDescending;
        state.sort = column.key;
        show();
      });
      column.heading = make("th", {scope: "col", className: column.kind ?? ""}, button);
      headings.append(column.heading);
    }
  }

  function fillChoices(id, all, choices) {
    byId(id).append(new Option(all, ""), ...choices.map(([text, value]) => new Option(text, value)));
  }

  function valuesOf(key) {
    const values = new Set(photos.map((photo) => photo[key]).filter((value) => value));
    return [...values].sort(collator.compare).map((value) => [value, value]);
  }

  function makeFilters() {
    fillChoices("filter-camera", "Any", valuesOf("camera"));
    fillChoices("filter-lens", "Any", valuesOf("lens"));
    fillChoices("filter-rating", "Any",
                [1, 2, 3, 4, 5].map((n) => [n === 5 ? "★★★★★" : `${"★".repeat(n)} or more`, n]));
    for (const key of ["text", "camera", "lens", "rating"]) {
      byId(`filter-${key}`).addEventListener("input", (event) => {
        state[key] = event.target.value;
        show();
      });
    }
    const form = byId("filters");
    form.addEventListener("submit", (event) => event.preventDefault());
    form.addEventListener("reset", () => {
      Object.assign(state, {text: "", camera: "", lens: "", rating: ""});
      show();
    });
  }

  // Whole stops, as they are written on cameras; each bin reaches half a stop to both sides.
  const stops = (first, last, at) =>
    Array.from({length: last - first + 1}, (_, i) => at(first + i));
  const plots = [
    {
      key: "focalLength",
      title: "Focal length",
      unit: "mm",
      marks: [8, 12, 18, 24, 35, 50, 70, 100, 135, 200, 300, 400, 600],
      label: (mark) => String(mark),
    },
    {
      key: "fNumber",
      title: "Aperture",
      unit: "F-number",
      marks: [1, 1.4, 2, 2.8, 4, 5.6, 8, 11, 16, 22, 32],
      label: (mark) => String(mark),
    },
    {
      key: "exposureTime",
      title: "Shutter",
      unit: "seconds",
      marks: [1 / 8000, 1 / 4000, 1 / 2000, 1 / 1000, 1 / 500, 1 / 250, 1 / 125, 1 / 60, 1 / 30,
              1 / 15, 1 / 8, 1 / 4, 1 / 2, 1, 2, 4, 8, 15, 30],
      label: (mark) => (mark < 1 ? `1/${Math.round(1 / mark)}` : String(mark)),
    },
    {
      key: "iso",
      title: "ISO",
      unit: "speed",
      marks: stops(-1, 10, (stop) => 100 * 2 ** stop),
      label: (mark) => (mark >= 10000 ? `${decimal(mark / 1000)}k` : String(mark)),
    },
  ];

  // The nearest mark, by ratio. A value that isn't above 0 has no place.
  function nearest(marks, value) {
    const distance = (mark) => Math.abs(Math.log(value / mark));
    return marks.reduce((best, mark, i) => (distance(mark) < distance(marks[best]) ? i : best), 0);
  }

  // The counts at the marks from the first to the last that has any, with at least five marks.
  function countAt(plot, shown) {
    const counts = plot.marks.map(() => 0);
    for (const photo of shown) {
      if (photo[plot.key] > 0) {
        counts[nearest(plot.marks, photo[plot.key])] += 1;
      }
    }
    let first = counts.findIndex((count) => count > 0);
    if (first < 0) {
      return [];
    }
    let last = counts.findLastIndex((count) => count > 0);
    while (last - first < 4) {
      first = Math.max(0, first - 1);
      last = Math.min(counts.length - 1, last + 1);
    }
    return counts.map((count, i) => ({count, label: plot.label(plot.marks[i])}))
      .slice(first, last + 1);
  }

  function drawPlot(plot, shown) {
    const [width, height, top, bottom] = [340, 132, 14, 16];
    const bars = countAt(plot, shown);
    const known = bars.reduce((sum, bar) => sum + bar.count, 0);
    const words = bars.filter((bar) => bar.count > 0)
      .map((bar) => `${bar.label}: ${bar.count}`).join(", ");
    const svg = makeSvg("svg", {
      viewBox: `0 0 ${width} ${height}`,
      role: "img",
      "aria-label": known > 0 ? `${plot.title} (${plot.unit}): ${words}` : `${plot.title}: unknown`,
    });
    const most = Math.max(...bars.map((bar) => bar.count), 1);
    const step = width / Math.max(bars.length, 1);
    const room = height - top - bottom;
    bars.forEach((bar, i) => {
      const length = room * bar.count / most;
      const middle = (i + 0.5) * step;
      const place = {x: i * step + step * 0.12, width: step * 0.76, rx: 2};
      svg.append(makeSvg("rect", {...place, class: "ground", y: top, height: room}));
      if (bar.count > 0) {
        svg.append(makeSvg("rect", {...place, y: top + room - length, height: length}));
        svg.append(makeSvg("text", {class: "count", x: middle, y: top + room - length - 3},
                           String(bar.count)));
      }
      // Long labels of many bars would run into each other.
      if (bars.length <= 9 || i % 2 === 0) {
        svg.append(makeSvg("text", {x: middle, y: height - 4}, bar.label));
      }
    });
    const caption = make("figcaption", {}, plot.title,
                         make("span", {}, known > 0 ? plot.unit : "unknown"));
    return make("figure", {className: "plot"}, caption, svg);
  }

  function show() {
    const shown = photos.filter(fits).sort(compare);
    byId("rows").replaceChildren(...shown.map((photo) => photo.row));
    byId("empty").hidden = shown.length > 0;
    byId("count").textContent = `${shown.length} of ${photos.length} photos`;
    byId("plots").replaceChildren(...plots.map((plot) => drawPlot(plot, shown)));
    for (const column of columns) {
      const order = state.isDescending ? "descending" : "ascending";
      column.heading.ariaSort = column.key === state.sort ? order : "none";
    }
    writeAddress();
  }

  function showFolder() {
    const name = data.folder.replace(/[\\/]+$/, "").split(/[\\/]/).pop() || data.folder;
    const cameras = valuesOf("camera").length;
    const days = photos.map((photo) => photo.taken).filter((taken) => /^\d{4}-/.test(taken))
      .map((taken) => taken.slice(0, 10)).sort();
    const range = days[0] === days.at(-1) ? days[0] : `${days[0]} to ${days.at(-1)}`;
    document.title = `Photos in ${name}`;
    byId("title").title = data.folder;
    byId("title").textContent = `Photos in ${name}`;
    byId("subtitle").textContent = [
      `${photos.length} ${photos.length === 1 ? "photo" : "photos"}`,
      `${cameras} ${cameras === 1 ? "camera" : "cameras"}`,
      ...(days.length > 0 ? [range] : []),
    ].join(" · ");
  }

  showFolder();
  makeHeadings();
  makeFilters();
  readAddress();
  addEventListener("hashchange", () => {
    readAddress();
    show();
  });
  show();
})();
