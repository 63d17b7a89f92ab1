// Keeps the page for when there is no network. A page that was built anew has another version.

const version = "bouncecheck-{{version}}";
const files = ["./", "manifest.webmanifest"];

addEventListener("install", (event) => {
    event.waitUntil(caches.open(version).then((cache) => cache.addAll(files)));
    skipWaiting();
});

addEventListener("activate", (event) => {
    const removeOthers = async () => {
        for (const name of await caches.keys()) {
            if (name.startsWith("bouncecheck-") && name !== version) await caches.delete(name);
        }
    };
    event.waitUntil(removeOthers().then(() => clients.claim()));
});

addEventListener("fetch", (event) => {
    const { request } = event;
    if (request.method !== "GET") return;
    // The folder and its page are the same.
    const asked = request.url.replace(/\/index\.html(?=[?#]|$)/, "/");
    const kept = caches.match(asked, { ignoreSearch: true });
    event.respondWith(kept.then((response) => response ?? fetch(request)));
});
