import bouncecheck = require('bouncecheck');

const label: string | null = bouncecheck.classify('').label;
console.log(label);
